#include "editor/shell/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QTimerEvent>
#include <QToolButton>

#include <algorithm>

namespace Editor {

namespace {

constexpr int informationTime = 6000; // ms
constexpr int keptAtMost = 4;

} // namespace

QStyle::StandardPixmap NoticeBar::markOf(Workspace::Level level)
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

NoticeBar::NoticeBar(QWidget *parent)
    : QFrame(parent),
      m_mark(new QLabel(this)),
      m_text(new QLabel(this)),
      m_log(new QToolButton(this)),
      m_close(new QToolButton(this))
{
    setFrameShape(QFrame::StyledPanel);
    setObjectName(QStringLiteral("notice"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_log->setText(tr("Все сообщения"));
    m_log->setAutoRaise(true);
    connect(m_log, &QToolButton::clicked, this, &NoticeBar::logRequested);
    m_close->setText(QStringLiteral("×"));
    m_close->setObjectName(QStringLiteral("closeNotice"));
    m_close->setAccessibleName(tr("Убрать сообщение"));
    m_close->setAutoRaise(true);
    m_close->setToolTip(tr("Убрать сообщение"));
    connect(m_close, &QToolButton::clicked, this, &NoticeBar::dismiss);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(m_mark);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_log);
    layout->addWidget(m_close);
    hide();
}

void NoticeBar::tell(Workspace::Level level, const QString &text)
{
    stopTimer();
    if (level == Workspace::Info) {
        m_timer = startTimer(informationTime);
    } else {
        const auto isSame = [&text](const Notice &kept) { return kept.text == text; };
        m_kept.erase(std::remove_if(m_kept.begin(), m_kept.end(), isSame), m_kept.end());
        m_kept.append({level, text});
        if (m_kept.size() > keptAtMost)
            m_kept.removeFirst();
    }
    show({level, text});
}

void NoticeBar::clear()
{
    stopTimer();
    m_kept.clear();
    hide();
}

void NoticeBar::show(const Notice &notice)
{
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_mark->setPixmap(
        style()->standardIcon(markOf(notice.level), nullptr, this).pixmap(size, size));
    m_text->setText(notice.text);
    QFrame::show();
}

void NoticeBar::dismiss()
{
    if (!m_timer && !m_kept.isEmpty())
        m_kept.removeLast();
    showKept();
}

void NoticeBar::showKept()
{
    stopTimer();
    if (m_kept.isEmpty())
        hide();
    else
        show(m_kept.last());
}

void NoticeBar::stopTimer()
{
    if (m_timer)
        killTimer(m_timer);
    m_timer = 0;
}

void NoticeBar::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_timer)
        showKept();
    else
        QFrame::timerEvent(event);
}

} // namespace Editor
