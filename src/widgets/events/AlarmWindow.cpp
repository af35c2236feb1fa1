#include "widgets/events/AlarmWindow.h"

#include "widgets/context/ProcessContext.h"
#include "widgets/events/AlarmDialog.h"
#include "widgets/events/ModelManager.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/desktop/DesktopOrder.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/system/systemCore.h"

#include <QDir>
#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <QWindow>

namespace Widgets {

namespace {

constexpr int comingUpDelay = 100; // ms
constexpr QPoint firstPlace(200, 200);
constexpr int firstHeight = 300;
constexpr int leastList = 160;        // three rows and their header
constexpr int buttonsOfDisplays = 64; // at the bottom of most
const QString windowName = QStringLiteral("AlarmWindow");
const QString commonFile = QStringLiteral("config.json");

// With the data of this station: others on the machine have their own place.
QString settingsFile()
{
    const Nodes::systemCore *core = ProcessContext::model();
    const std::string data = core ? core->GetDataDirectory() : std::string();
    return data.empty() ? commonFile : QDir(QString::fromStdString(data)).filePath(commonFile);
}

} // namespace

AlarmWindow::AlarmWindow(QWidget *parent)
    : FrameWindow(parent),
      ConfiguratorWindow(this, windowName, settingsFile()),
      m_dialog(new AlarmDialog)
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setWindowModality(Qt::NonModal);
    setDimmable(false);
    DesktopOrder::keepUsable(*this);
    setWidget(m_dialog);
    setWindowTitle(QStringLiteral("Тревоги"), true);
    setGeometry(QRect(firstPlace, QSize(width(), firstHeight)));
    connect(m_dialog, &AlarmDialog::closeRequested, this, &QWidget::close);
    connect(m_dialog, &AlarmDialog::heightWanted, this, &AlarmWindow::makeRoom);
    m_comingUp.setSingleShot(true);
    m_comingUp.setInterval(comingUpDelay);
    connect(&m_comingUp, &QTimer::timeout, this, &AlarmWindow::bringUp);
}

AlarmWindow::~AlarmWindow() = default;

void AlarmWindow::ReceiveAlarms(const std::vector<Nodes::BasicEvent> &events)
{
    if (m_dialog->manager().addOrUpdate(events) && !m_comingUp.isActive())
        m_comingUp.start();
}

void AlarmWindow::forget(const QSet<unsigned long> &alarms)
{
    m_dialog->manager().forget(alarms);
}

void AlarmWindow::open()
{
    m_dialog->manager().refresh();
    comeUp(true);
}

void AlarmWindow::bringUp()
{
    comeUp(false);
}

void AlarmWindow::comeUp(bool takesFocus)
{
    const Nodes::systemAlarming *alarming = DesktopContext::alarming();
    if (!alarming || !alarming->isWindowEnabled())
        return;
    DesktopOrder::restoreFrames();
    m_dialog->soundOn();
    setWindowModality(Qt::NonModal);
    setAttribute(Qt::WA_ShowWithoutActivating, !takesFocus);
    if (isHidden()) {
        const bool isKept = loadPlace().IsSuccess();
        const bool isFirst = height() == firstHeight; // nobody has chosen one yet
        if (isFirst)
            resize(width(), firstHeight + m_dialog->besidesHeight());
        keepOnScreen(isKept ? width() : QWIDGETSIZE_MAX, isFirst ? buttonsOfDisplays : 0);
        show();
    } else if (isMinimized()) {
        showNormal();
    }
    if (takesFocus) {
        windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus, false);
        raise();
        activateWindow();
    } else {
        DesktopOrder::raiseQuietly(*this);
    }
}

// The first time, the place that all stations of the user shared in earlier versions will do.
Nodes::Result AlarmWindow::loadPlace()
{
    QJsonObject own;
    const Nodes::Result result = Configurator::load(own);
    const bool isFirst = result && own.isEmpty();
    return isFirst ? ConfiguratorWindow(this, windowName, commonFile).load() : load();
}

// Nothing is kept of a panel's size before the first time, and buttons may have grown since.
// Whoever made it narrower than its buttons wants them in several rows.
void AlarmWindow::keepOnScreen(int keptWidth, int free)
{
    const QScreen *screen = QGuiApplication::screenAt(geometry().center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect room = screen->availableGeometry();
    m_dialog->setRoom(qMin(room.width(), keptWidth) - outerSize(QSize(0, 0)).width());
    resize(size().expandedTo(minimumSizeHint()).boundedTo(room.size()));
    move(qBound(room.left(), x(), room.right() + 1 - width()),
         qBound(room.top(), y(), qMax(room.top(), room.bottom() + 1 - free - height())));
}

// The list gives of its rows first. What is missing grows downwards where no buttons of the
// displays are covered by it, else upwards; folded in, all is as it was.
void AlarmWindow::makeRoom(int before)
{
    const QScreen *screen = QGuiApplication::screenAt(geometry().center());
    if (!screen || !isVisible() || isMaximized())
        return;
    if (geometry() != m_made) {
        m_chosen = geometry();
        m_besides = before;
    }
    const QRect room = screen->availableGeometry();
    m_dialog->layout()->activate();
    const int least =
        minimumSizeHint().height() + leastList - m_dialog->table().minimumSizeHint().height();
    const bool isMore = m_dialog->besidesHeight() > m_besides;
    const int height =
        qMin(isMore ? qMax(m_chosen.height(), least) : m_chosen.height(), room.height());
    const int lowest = qMax(m_chosen.bottom(), room.bottom() - buttonsOfDisplays) + 1;
    const int top = qMin(m_chosen.top(), lowest - height);
    setGeometry(m_chosen.left(), qMax(room.top(), top), m_chosen.width(), height);
    m_made = geometry();
}

void AlarmWindow::hideEvent(QHideEvent *event)
{
    (void)save();
    FrameWindow::hideEvent(event);
}

} // namespace Widgets
