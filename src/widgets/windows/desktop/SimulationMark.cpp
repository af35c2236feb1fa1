#include "widgets/windows/desktop/SimulationMark.h"

#include "widgets/windows/frames/FrameWindow.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>

namespace Widgets {

namespace {

constexpr int besideText = 8; // px

/// The band itself.
class Band : public QLabel
{
public:
    explicit Band(QWidget *window) : QLabel(SimulationMark::text(), window)
    {
        setObjectName(QStringLiteral("simulationMark"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        setAlignment(Qt::AlignCenter);
        QFont bold = font();
        bold.setBold(true);
        bold.setPixelSize(12);
        setFont(bold);
        setStyleSheet(QStringLiteral("background: #FFD23F; color: #101010; border: 1px solid "
                                     "#101010; border-top: none; border-left: none;"));
        place();
        show();
    }
    void place()
    {
        resize(sizeHint().width() + 2 * besideText, sizeHint().height() + 4);
        move(0, 0); // alarms and values are seldom in that corner
        raise();
    }
};

bool isFrame(const QWidget &window)
{
    return window.windowType() == Qt::Window;
}

} // namespace

SimulationMark::SimulationMark(QObject *parent) : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

SimulationMark::~SimulationMark() = default;

void SimulationMark::markTitle(QWidget &window)
{
    const QString title = window.windowTitle();
    if (title.startsWith(text()))
        return;
    const QString marked = title.isEmpty() ? text() : text() + QStringLiteral(" — ") + title;
    if (auto *frame = qobject_cast<FrameWindow *>(&window))
        frame->setWindowTitle(marked);
    else
        window.setWindowTitle(marked);
}

void SimulationMark::markContent(QWidget &window)
{
    auto *band = dynamic_cast<Band *>(
        window.findChild<QLabel *>(QStringLiteral("simulationMark"), Qt::FindDirectChildrenOnly));
    if (band)
        band->place();
    else
        new Band(&window);
}

bool SimulationMark::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    const bool isConcerned = type == QEvent::Show || type == QEvent::WindowTitleChange ||
                             type == QEvent::Resize || type == QEvent::ChildPolished;
    if (!isConcerned || !watched->isWidgetType())
        return false;
    auto *window = static_cast<QWidget *>(watched);
    // Elements that take input are windows of their own inside of a scene.
    if (!window->isWindow() || window->graphicsProxyWidget() ||
        (!isFrame(*window) && window->windowType() != Qt::Dialog))
        return false;
    if (type == QEvent::Show || type == QEvent::WindowTitleChange)
        markTitle(*window);
    if (isFrame(*window) && type != QEvent::WindowTitleChange && window->isVisible())
        markContent(*window);
    return false;
}

} // namespace Widgets
