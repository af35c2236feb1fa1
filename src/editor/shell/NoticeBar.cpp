#include "editor/shell/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QTimerEvent>
#include <QToolButton>

namespace Editor {

namespace {

constexpr int informationTime = 6000; // ms

QStyle::StandardPixmap markOf(Workspace::Level level)
{
    switch (level) {
    case Workspace::Info:
        return QStyle::SP_MessageBoxInformation;
    case Workspace::Warning:
        return QStyle::SP_MessageBoxWarning;
    case Workspace::Error:
        break;
    }
    return QStyle::SP_MessageBoxCritical;
}

} // namespace

NoticeBar::NoticeBar(QWidget *parent)
    : QFrame(parent),
      m_mark(new QLabel(this)),
      m_text(new QLabel(this)),
      m_close(new QToolButton(this))
{
    setFrameShape(QFrame::StyledPanel);
    setObjectName(QStringLiteral("notice"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_close->setText(QStringLiteral("×"));
    m_close->setAutoRaise(true);
    m_close->setToolTip(tr("Убрать сообщение"));
    connect(m_close, &QToolButton::clicked, this, &QWidget::hide);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(m_mark);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_close);
    hide();
}

void NoticeBar::tell(Workspace::Level level, const QString &text)
{
    if (m_timer)
        killTimer(m_timer);
    m_timer = level == Workspace::Info ? startTimer(informationTime) : 0;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_mark->setPixmap(style()->standardIcon(markOf(level), nullptr, this).pixmap(size, size));
    m_text->setText(text);
    show();
}

void NoticeBar::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer) {
        QFrame::timerEvent(event);
        return;
    }
    killTimer(m_timer);
    m_timer = 0;
    hide();
}

} // namespace Editor
