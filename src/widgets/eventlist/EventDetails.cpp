#include "widgets/eventlist/EventDetails.h"

#include "widgets/charts/marks/JournalAsker.h"
#include "widgets/eventlist/EventListLook.h"
#include "widgets/eventlist/OneLine.h"

#include "nodes/events/EventInfo.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/system/systemCore.h"
#include "utils/convert/TimeConversions.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace Widgets {

namespace {

constexpr int paneHeight = 184;
// Characters: laying out a line takes time that grows with more than its length.
constexpr int longestLine = 500;

QString brokenLines(const QString &text)
{
    QString broken;
    broken.reserve(text.size() + text.size() / longestLine);
    int inLine = 0;
    for (const QChar sign : text) {
        inLine = sign == QLatin1Char('\n') ? 0 : inLine + 1;
        broken.append(sign);
        if (inLine == longestLine && !sign.isHighSurrogate()) {
            broken.append(QLatin1Char('\n'));
            inLine = 0;
        }
    }
    return broken;
}

} // namespace

EventDetails::EventDetails(QWidget *parent)
    : QWidget(parent),
      m_head(new QLabel(this)),
      m_text(new QPlainTextEdit(this)),
      m_copy(new QPushButton(QStringLiteral("Копировать"), this)),
      m_asker(new JournalAsker(this))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(EventListLook::Gap);
    auto *line = new QHBoxLayout;
    line->addWidget(m_head, 1);
    line->addWidget(m_copy);
    column->addLayout(line);
    column->addWidget(m_text);
    m_head->setTextFormat(Qt::PlainText);
    m_head->setStyleSheet(QStringLiteral("font-weight: bold;"));
    m_text->setReadOnly(true);
    m_text->setUndoRedoEnabled(false);
    setFixedHeight(paneHeight);
    connect(m_copy, &QPushButton::clicked, this, &EventDetails::copy);
    connect(m_asker, &JournalAsker::answered, this, &EventDetails::onAnswered);
    clear();
}

void EventDetails::clear()
{
    m_event = {};
    m_awaited = 0;
    m_head->setText(QStringLiteral("Выберите событие"));
    m_text->clear();
    m_copy->setEnabled(false);
}

void EventDetails::setEvent(const Nodes::BasicEvent &event, bool isCut, Nodes::systemCore *model)
{
    m_event = event;
    m_awaited = 0;
    show(event);
    if (!isCut || !model || event.id == 0)
        return;
    m_head->setText(m_head->text() + QStringLiteral(" — читается полностью…"));
    Nodes::JournalQuery query;
    query.begin = event.time;
    query.end = event.time + 1;
    query.after = Nodes::JournalKey{event.time, event.id - 1};
    query.limit = 1;
    m_awaited = event.id;
    m_asker->ask(model->GetJournal(), query);
}

void EventDetails::onAnswered(const Nodes::Result &result,
                              const std::vector<Nodes::BasicEvent> &events)
{
    if (m_awaited == 0 || m_awaited != m_event.id)
        return; // another event is shown now, as a whole
    m_awaited = 0;
    if (result && !events.empty() && events.front().id == m_event.id) {
        m_event = events.front();
        show(m_event);
    } else {
        show(m_event);
        m_head->setText(m_head->text() + QStringLiteral(" — показано только начало"));
    }
}

void EventDetails::show(const Nodes::BasicEvent &event)
{
    const Nodes::EventInfo info(event);
    m_head->setText(QStringLiteral("%1 · %2 · %3")
                        .arg(Utils::timeText(event.time, Utils::tableTimeFormat),
                             QString::fromStdString(info.GetEventLevel()),
                             QString::fromStdString(info.GetEventType())));
    m_text->setPlainText(brokenLines(SafeText(textOf(event))));
    m_copy->setEnabled(true);
}

QString EventDetails::textOf(const Nodes::BasicEvent &event)
{
    QStringList lines{QString::fromStdString(event.text), QString()};
    const auto add = [&lines](const char *title, const std::string &value) {
        if (!value.empty())
            lines << QString::fromUtf8(title) + QString::fromStdString(value);
    };
    const Nodes::EventInfo info(event);
    add("Источник: ", event.source);
    add("Пользователь: ", event.user);
    add("Было: ", event.oldValue);
    add("Стало: ", event.newValue);
    if (event.alarmState != Nodes::AlarmState::None)
        add("Тревога: ", info.GetGroupString());
    if (event.id != 0)
        add("Запись журнала: ", std::to_string(event.id));
    return lines.join(QLatin1Char('\n'));
}

QString EventDetails::shownText() const
{
    return m_text->toPlainText();
}

void EventDetails::copy() const
{
    const Nodes::EventInfo info(m_event);
    QGuiApplication::clipboard()->setText(
        QStringLiteral("%1\n%2, %3\n%4")
            .arg(Utils::timeText(m_event.time, Utils::tableTimeFormat),
                 QString::fromStdString(info.GetEventLevel()),
                 QString::fromStdString(info.GetEventType()), textOf(m_event)));
}

} // namespace Widgets
