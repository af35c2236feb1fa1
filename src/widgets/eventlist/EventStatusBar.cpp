#include "widgets/eventlist/EventStatusBar.h"

#include "widgets/eventlist/EventListLook.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>

namespace Widgets {

namespace {

QString number(int count)
{
    return QLocale(QLocale::Russian, QLocale::Russia).toString(count);
}

} // namespace

EventStatusBar::EventStatusBar(QWidget *parent)
    : QWidget(parent),
      m_counts(new QLabel(this)),
      m_new(new QPushButton(this)),
      m_note(new QLabel(this)),
      m_reading(new QLabel(QStringLiteral("Чтение журнала…"), this)),
      m_cancel(new QPushButton(QStringLiteral("Прервать"), this))
{
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(EventListLook::Gap);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_note->setStyleSheet(QStringLiteral("font-weight: bold;"));
    line->addWidget(m_counts);
    line->addWidget(m_new);
    line->addWidget(m_note, 1);
    line->addWidget(m_reading);
    line->addWidget(m_cancel);
    setMinimumHeight(EventListLook::Touch);
    for (QPushButton *button : {m_new, m_cancel})
        button->setFocusPolicy(Qt::TabFocus);
    connect(m_new, &QPushButton::clicked, this, &EventStatusBar::newestAsked);
    connect(m_cancel, &QPushButton::clicked, this, &EventStatusBar::cancelled);
    setNew(0);
    setReading(false);
    setCounts(0, 0);
}

void EventStatusBar::setCounts(int shown, int held, int sources)
{
    QString text = shown == held
                       ? QStringLiteral("Событий: %1").arg(number(held))
                       : QStringLiteral("Показано: %1 из %2").arg(number(shown), number(held));
    if (sources > 0)
        text += QStringLiteral(" · только источников: %1").arg(number(sources));
    m_counts->setText(text);
}

QString EventStatusBar::counts() const
{
    return m_counts->text();
}

void EventStatusBar::setNew(int count)
{
    m_newCount = count;
    m_new->setVisible(count > 0);
    m_new->setText(QStringLiteral("новых: %1").arg(number(count)));
}

void EventStatusBar::setReading(bool isReading)
{
    m_reading->setVisible(isReading);
    m_cancel->setVisible(isReading);
}

void EventStatusBar::setNote(const QString &note)
{
    m_note->setText(note);
}

QString EventStatusBar::note() const
{
    return m_note->text();
}

} // namespace Widgets
