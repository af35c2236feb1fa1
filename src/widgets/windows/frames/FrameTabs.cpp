#include "widgets/windows/frames/FrameTabs.h"

#include "widgets/windows/desktop/DesktopPlacement.h"

#include <QEvent>
#include <QFont>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>

namespace Widgets {

namespace {

constexpr QSize gripSize(96, 4);       // pixels; what stands at the edge is a few pixels below it
constexpr int restBeforeOpening = 250; // ms
constexpr int buttonHeight = 44;       // what a finger hits
constexpr int margin = 4;
constexpr int fontPixels = 15;

const QColor ground(0x37, 0x42, 0x4b);
const QColor mark(0xf4, 0xf6, 0xf7);

const char *const buttonStyle =
    "QPushButton { background: #f4f6f7; color: #20262c; border: 1px solid #8a949b;"
    " border-radius: 3px; padding: 0 14px; }"
    "QPushButton:pressed { background: #b4bdc4; }"
    "QPushButton:checked { background: #b4bdc4; border: 2px solid #20262c; }";

} // namespace

FrameTabs *FrameTabs::of(const QWidget &frame)
{
    return frame.findChild<FrameTabs *>(QString(), Qt::FindDirectChildrenOnly);
}

void FrameTabs::renew(QWidget &frame, const QVector<QPointer<QWidget>> &frames)
{
    FrameTabs *tabs = of(frame);
    const bool isNeeded = frames.size() > 1;
    if (tabs && isNeeded && tabs->m_frames == frames)
        return tabs->place();
    delete tabs;
    if (isNeeded)
        new FrameTabs(frame, frames);
}

FrameTabs::FrameTabs(QWidget &frame, const QVector<QPointer<QWidget>> &frames)
    : QWidget(&frame), m_frames(frames)
{
    setObjectName(QStringLiteral("frameTabs"));
    setAttribute(Qt::WA_AcceptTouchEvents);
    setCursor(Qt::ArrowCursor);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(margin, margin, margin, margin);
    row->setSpacing(margin);
    for (const QPointer<QWidget> &other : frames)
        addButton(*other);
    frame.installEventFilter(this);
    m_rest.setSingleShot(true);
    m_rest.setInterval(restBeforeOpening);
    connect(&m_rest, &QTimer::timeout, this, [this] { setOpen(true); });
    setOpen(false);
    raise();
    show();
}

void FrameTabs::addButton(QWidget &frame)
{
    const bool isHere = &frame == parentWidget();
    auto *button = new QPushButton(frame.windowTitle().replace('&', QLatin1String("&&")), this);
    QFont font = button->font();
    font.setPixelSize(fontPixels);
    font.setBold(isHere);
    button->setFont(font);
    button->setStyleSheet(QLatin1String(buttonStyle));
    button->setMinimumHeight(buttonHeight);
    button->setFocusPolicy(Qt::NoFocus);
    button->setCheckable(isHere);
    button->setChecked(isHere);
    const QPointer<QWidget> target = &frame;
    connect(button, &QPushButton::clicked, this, [this, target] {
        setOpen(false);
        if (target)
            DesktopPlacement::present(*target);
    });
    layout()->addWidget(button);
    m_buttons.append(button);
}

void FrameTabs::setOpen(bool isOpen)
{
    m_isOpen = isOpen;
    m_rest.stop();
    for (QPushButton *button : qAsConst(m_buttons))
        button->setVisible(isOpen);
    for (int i = 0; i < m_buttons.size(); ++i)
        m_buttons[i]->setChecked(m_buttons[i]->isCheckable());
    place();
}

void FrameTabs::place()
{
    const QSize size = m_isOpen ? layout()->totalSizeHint() : gripSize;
    setGeometry((parentWidget()->width() - size.width()) / 2, 0, size.width(), size.height());
    update();
}

bool FrameTabs::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}

// A pointer that only passes, on its way to what stands below, is not to find it covered.
void FrameTabs::enterEvent(QEvent *event)
{
    if (!m_isOpen)
        m_rest.start();
    QWidget::enterEvent(event);
}

void FrameTabs::leaveEvent(QEvent *event)
{
    setOpen(false);
    QWidget::leaveEvent(event);
}

void FrameTabs::mousePressEvent(QMouseEvent *)
{
    setOpen(true);
}

void FrameTabs::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    if (!m_isOpen)
        painter.fillRect(rect().adjusted(6, 1, -6, -1), mark);
}

} // namespace Widgets
