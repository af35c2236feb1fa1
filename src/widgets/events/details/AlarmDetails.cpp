#include "widgets/events/details/AlarmDetails.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/WrapLayout.h"
#include "widgets/events/AlarmRow.h"
#include "widgets/events/AlarmSigns.h"
#include "widgets/events/AlarmSpans.h"

#include "nodes/alarms/BasicAlarm.h"
#include "utils/convert/TimeConversions.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStringList>

#include <utility>

namespace Widgets {

using Command = AlarmCommands;
using Nodes::AlarmState;

namespace {

constexpr int gap = 8;
constexpr int badgeSize = 28;
constexpr int guidanceHeight = 84;
const QString nothing = QStringLiteral("—");

const std::array<const char *, 3> captions{"Причина", "Последствия", "Что делать"};

QLabel *makeLabel(QWidget *parent, bool isBold = false)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    MakeLegible(*label);
    QFont font = label->font();
    font.setBold(isBold);
    label->setFont(font);
    return label;
}

const Nodes::BasicAlarm *nodeOf(const std::optional<Nodes::BasicEvent> &alarm)
{
    return alarm ? dynamic_cast<const Nodes::BasicAlarm *>(alarm->sourceNode.GetNode()) : nullptr;
}

void add(QStringList &facts, const char *name, const QString &value)
{
    if (!value.isEmpty())
        facts << QStringLiteral("%1: %2").arg(QString::fromUtf8(name), value);
}

} // namespace

AlarmDetails::AlarmDetails(QWidget *parent)
    : QWidget(parent),
      m_sign(new QLabel(this)),
      m_title(makeLabel(this, true)),
      m_facts(makeLabel(this)),
      m_time(makeLabel(this, true)),
      m_obstacles(makeLabel(this)),
      m_buttonRow(new WrapLayout)
{
    m_title->setObjectName(QStringLiteral("title"));
    m_time->setObjectName(QStringLiteral("time"));
    m_time->setWordWrap(false);
    m_obstacles->setObjectName(QStringLiteral("obstacles"));
    m_sign->setStyleSheet(QStringLiteral("QLabel { background: %1; padding: 2px; }")
                              .arg(AlarmSigns::listGround().name())); // hollow signs are light
    auto *head = new QHBoxLayout;
    head->setSpacing(gap);
    head->addWidget(m_sign);
    head->addWidget(m_title, 1);
    head->addWidget(m_time);
    m_buttonRow->setSpacing(gap);
    for (const Command::Row &row : Command::rows())
        addButton(row.command, QString::fromUtf8(row.text));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap / 2);
    column->addLayout(head);
    column->addWidget(m_facts);
    column->addWidget(makeGuidance());
    column->addWidget(m_obstacles);
    column->addLayout(m_buttonRow);
    setAlarm({});
}

// Scrolled: a guidance of any length leaves the list its room.
QWidget *AlarmDetails::makeGuidance()
{
    auto *texts = new QWidget;
    auto *grid = new QGridLayout(texts);
    grid->setContentsMargins(gap, 0, gap, 0);
    grid->setHorizontalSpacing(2 * gap);
    grid->setVerticalSpacing(0);
    grid->setRowStretch(1, 1);
    for (int text = 0; text < TextCount; ++text) {
        QLabel *caption = makeLabel(texts, true);
        caption->setText(QString::fromUtf8(captions[std::size_t(text)]));
        m_texts[std::size_t(text)] = makeLabel(texts);
        m_texts[std::size_t(text)]->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        grid->addWidget(caption, 0, text);
        grid->addWidget(m_texts[std::size_t(text)], 1, text);
        grid->setColumnStretch(text, 1);
    }
    auto *area = new QScrollArea(this);
    area->setWidget(texts);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFixedHeight(guidanceHeight); // the rest is the list's
    area->setFocusPolicy(Qt::NoFocus);
    return area;
}

void AlarmDetails::addButton(AlarmCommands::Command command, const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setFocusPolicy(Qt::NoFocus);
    MakeTouchable(*button);
    m_buttonRow->addWidget(button);
    m_buttons.emplace_back(command, button);
    connect(button, &QPushButton::clicked, this, [this, command] {
        if (m_alarm)
            emit wanted(command, Nodes::BasicEvent(*m_alarm));
    });
}

void AlarmDetails::setAlarm(const std::optional<Nodes::BasicEvent> &alarm)
{
    m_alarm = alarm;
    showFacts();
    showGuidance();
    setNow(m_now);
}

void AlarmDetails::setListEmpty(bool isEmpty)
{
    if (std::exchange(m_isListEmpty, isEmpty) != isEmpty)
        showFacts();
}

void AlarmDetails::showFacts()
{
    m_sign->setVisible(m_alarm.has_value());
    m_facts->setVisible(m_alarm.has_value());
    if (!m_alarm) {
        m_title->setText(m_isListEmpty
                             ? QStringLiteral("Тревог нет: показывать нечего")
                             : QStringLiteral("Нажмите на тревогу в списке, чтобы увидеть причину "
                                              "и что делать"));
        return;
    }
    m_sign->setPixmap(AlarmSigns::badge(m_alarm->alarmState, m_alarm->priority, badgeSize));
    const QString text = QString::fromStdString(m_alarm->text);
    m_title->setText(m_alarm->isFirstUp ? QStringLiteral("Первая в группе. ") + text : text);
    QStringList facts;
    add(facts, "Участок", QString::fromStdString(m_alarm->area));
    add(facts, "Источник", QString::fromStdString(m_alarm->source));
    add(facts, "Значение", AlarmRow::valueText(*m_alarm));
    if (m_alarm->raised != 0)
        add(facts, "Возникла", Utils::timeText(m_alarm->raised));
    if (m_alarm->returned != 0)
        add(facts, "Снята", Utils::timeText(m_alarm->returned));
    if (m_alarm->acknowledged != 0)
        add(facts, "Квитирована",
            QStringLiteral("%1 %2").arg(Utils::timeText(m_alarm->acknowledged),
                                        QString::fromStdString(m_alarm->user)));
    add(facts, "Комментарий", QString::fromStdString(m_alarm->comment));
    m_facts->setText(facts.join(QStringLiteral("  ·  ")));
}

void AlarmDetails::showGuidance()
{
    const Nodes::BasicAlarm *node = nodeOf(m_alarm);
    const std::array<std::string, TextCount> told{node ? node->GetCause() : std::string(),
                                                  node ? node->GetConsequence() : std::string(),
                                                  node ? node->GetResponse() : std::string()};
    for (std::size_t text = 0; text < told.size(); ++text)
        m_texts[text]->setText(!m_alarm             ? QString()
                               : told[text].empty() ? nothing
                                                    : QString::fromStdString(told[text]));
}

// A panel has no tool tips: why a button is grey stands above them.
void AlarmDetails::showButtons()
{
    QStringList obstacles;
    for (const auto &[command, button] : m_buttons) {
        const QString obstacle =
            m_alarm ? AlarmCommands::obstacle(command, *m_alarm) : QStringLiteral("Не выбрана");
        button->setEnabled(obstacle.isEmpty());
        button->setToolTip(obstacle);
        if (obstacle.startsWith(QStringLiteral("Нет права")) && !obstacles.contains(obstacle))
            obstacles << obstacle;
        if (command == Command::Reset)
            button->setVisible(m_alarm && m_alarm->alarmState == AlarmState::AwaitingReset);
    }
    m_obstacles->setText(obstacles.join(QStringLiteral(". ")));
    m_obstacles->setVisible(!obstacles.isEmpty());
}

// Rights may have changed meanwhile, too.
void AlarmDetails::setNow(Nodes::Timestamp now)
{
    m_now = now;
    showButtons();
    const Nodes::BasicAlarm *node = nodeOf(m_alarm);
    const int minutes = node ? node->GetResponseTime() : 0;
    const bool isPresent = m_alarm && m_alarm->returned == 0;
    const QString left =
        isPresent ? AlarmSpans::responseText(m_alarm->raised, minutes, now) : QString();
    m_time->setVisible(minutes > 0);
    m_time->setText(left.isEmpty()
                        ? QStringLiteral("На реакцию %1 мин").arg(minutes)
                        : QStringLiteral("На реакцию %1 мин, %2").arg(minutes).arg(left));
    const bool isLate = isPresent && AlarmSpans::isOverdue(m_alarm->raised, minutes, now);
    m_time->setStyleSheet(isLate ? QStringLiteral("QLabel { background: #c62828; color: #ffffff; "
                                                  "padding: 2px 8px; }")
                                 : QString());
}

void AlarmDetails::setRoom(int width)
{
    m_buttonRow->setRoom(width);
    layout()->invalidate();
    updateGeometry();
}

} // namespace Widgets
