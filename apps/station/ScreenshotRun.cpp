#include "apps/station/ScreenshotRun.h"

#include "apps/station/PictureTargets.h"

#include "nodes/actions/BasicTemplateAction.h"
#include "nodes/system/systemCore.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/windowComposed.h"
#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/WindowComposite.h"
#include "widgets/windows/WindowManager.h"
#include "widgets/windows/desktop/WindowPlacement.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QEventLoop>
#include <QImage>
#include <QPixmap>
#include <QTimer>

#include <cstdio>

namespace Station {

namespace {

constexpr int pollPeriod = 20; // ms
// Elements collapse bursts for up to 300 ms before they repaint.
constexpr int settleTime = 400;
constexpr int dialogPeriod = 500;
constexpr int loopDone = 1;

bool isBlank(const QImage &image)
{
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    const QRgb first = plain.isNull() ? 0 : plain.pixel(0, 0);
    for (int y = 0; y < plain.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(plain.constScanLine(y));
        for (int x = 0; x < plain.width(); ++x) {
            if (line[x] != first)
                return false;
        }
    }
    return true;
}

} // namespace

ScreenshotRun::ScreenshotRun(Widgets::WindowManager &manager, const QString &directory)
    : m_manager(manager), m_directory(directory)
{
}

ScreenshotRun::ExitCode ScreenshotRun::run()
{
    if (!m_directory.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "station: cannot create the directory \"%s\"\n",
                     qPrintable(m_directory.path()));
        return WindowFailed;
    }
    QTimer dismissal;
    connect(&dismissal, &QTimer::timeout, this, &ScreenshotRun::dismissDialog);
    dismissal.start(dialogPeriod);
    const auto targets = pictureTargets(*m_manager.getCore()->GetNodesCollection());
    for (const PictureTarget &target : targets) {
        if (m_isInterrupted)
            break;
        if (target.opening)
            shootInstance(target);
        else
            shoot(target);
    }
    shootAlarms();
    if (targets.empty())
        std::fprintf(stderr, "station: the project has no windows to picture\n");
    if (targets.empty() || m_failures > 0 || m_isInterrupted)
        return WindowFailed;
    return m_timeouts > 0 ? ValuesMissing : AllLive;
}

void ScreenshotRun::shoot(const PictureTarget &target)
{
    const unsigned long id = target.window->GetId();
    Widgets::WidgetLink opened;
    QWidget *widget = m_manager.GetWindow(id);
    if (!widget) {
        opened = open(target);
        widget = opened.widget;
    }
    if (!widget)
        fail(target, "the window did not open");
    else if (!showComposition(target, *widget))
        fail(target, "the window shows no compositions");
    else
        picture(target, target.content(), *widget);
    if (opened.widget)
        close(opened);
}

void ScreenshotRun::shootInstance(const PictureTarget &target)
{
    const int before = m_manager.windows().size();
    m_manager.PushAction(target.opening);
    const auto isOpen = [&] {
        return m_manager.windows().size() > before &&
               m_manager.windows().last().widget->isVisible();
    };
    if (!waitFor(isOpen, m_timeout)) {
        fail(target, "no instance opened");
        return;
    }
    const Widgets::WidgetLink opened = m_manager.windows().last();
    const Nodes::ConfigNode *node = Nodes::NodeLink(opened.id).GetNode();
    if (const auto *composed = dynamic_cast<const Nodes::windowComposed *>(node))
        node = composed->GetCurrentComposition();
    if (node)
        picture(target, *node, *opened.widget);
    else
        fail(target, "the instance shows nothing");
    close(opened);
}

// Fitted to the display as when it comes up; of a station without alarm window as it is.
void ScreenshotRun::shootAlarms()
{
    if (m_isInterrupted || !m_manager.getSystemAlarming())
        return;
    const QString file = m_directory.absoluteFilePath(QStringLiteral("alarm-window.png"));
    Widgets::AlarmWindow *window = m_manager.GetWindowAlarms();
    window->open();
    QCoreApplication::processEvents();
    const QImage image = window->grab().toImage();
    if (!image.save(file)) {
        ++m_failures;
        std::printf("alarm-window FAILED: the picture cannot be written\n");
    } else {
        std::printf("%s %dx%d live\n", qPrintable(file), image.width(), image.height());
    }
    std::fflush(stdout);
}

Widgets::WidgetLink ScreenshotRun::open(const PictureTarget &target)
{
    const Widgets::WidgetLink link = m_manager.createWindow(target.window, nullptr);
    if (link.widget) {
        if (auto *window = qobject_cast<Widgets::WindowBasic *>(link.widget))
            Widgets::WindowPlacement::remap(*window, m_manager.mappingOn(0));
        link.widget->show();
        link.widget->raise();
    }
    return link;
}

// The user who is logged in may have no right to close it; nobody asked an operator to open it.
void ScreenshotRun::close(const Widgets::WidgetLink &link)
{
    if (!m_manager.closeWindow(link.id, link.widget))
        link.widget->deleteLater();
    pause(0);
}

bool ScreenshotRun::showComposition(const PictureTarget &target, QWidget &widget)
{
    if (!target.composition)
        return true;
    auto *composite = qobject_cast<Widgets::WindowComposite *>(&widget);
    const auto *node = dynamic_cast<const Nodes::windowComposed *>(target.window);
    if (!composite || !node)
        return false;
    if (node->GetCurrentComposition() != target.composition)
        composite->LoadComposition(target.composition);
    return true;
}

void ScreenshotRun::picture(const PictureTarget &target, const Nodes::ConfigNode &shown,
                            QWidget &widget)
{
    const bool isLive = waitFor([&] { return countMissingValues(shown) == 0; }, m_timeout);
    pause(settleTime);
    if (m_isInterrupted)
        return;
    const QImage image = widget.grab().toImage();
    const QString file = m_directory.absoluteFilePath(target.fileName() + QStringLiteral(".png"));
    if (isBlank(image)) {
        fail(target, "the window is blank");
        return;
    }
    if (!image.save(file)) {
        fail(target, "the picture cannot be written");
        return;
    }
    const int missing = countMissingValues(shown);
    if (!isLive)
        ++m_timeouts;
    std::printf("%s %dx%d %s\n", qPrintable(file), image.width(), image.height(),
                isLive ? "live"
                       : qPrintable(QStringLiteral("TIMEOUT: %1 values missing").arg(missing)));
    std::fflush(stdout);
}

bool ScreenshotRun::waitFor(const std::function<bool()> &isDone, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!m_isInterrupted && !isDone()) {
        if (deadline.hasExpired())
            return false;
        pause(pollPeriod);
    }
    return !m_isInterrupted;
}

// A loop that ends with another code than its own was ended by the application's quit.
void ScreenshotRun::pause(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, [&loop] { loop.exit(loopDone); });
    if (loop.exec() != loopDone)
        m_isInterrupted = true;
}

void ScreenshotRun::dismissDialog()
{
    if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
        qWarning("closed a dialog that would wait for an answer: \"%s\"",
                 qPrintable(dialog->windowTitle()));
        dialog->reject();
    }
}

void ScreenshotRun::fail(const PictureTarget &target, const char *reason)
{
    ++m_failures;
    std::printf("%s FAILED: %s\n", qPrintable(target.fileName()), reason);
    std::fflush(stdout);
}

} // namespace Station
