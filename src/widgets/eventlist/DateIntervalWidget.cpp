#include "widgets/eventlist/DateIntervalWidget.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/eventlist/DayInterval.h"

#include <QCalendarWidget>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTextCharFormat>
#include <QToolButton>

#include <utility>

namespace Widgets {

namespace {

constexpr int margin = 16;
constexpr int gap = 8;

constexpr const char *calendarStyle =
    "QCalendarWidget QWidget#qt_calendar_navigationbar { background: #cfd6db; }"
    "QCalendarWidget QToolButton { color: #20262c; min-height: 40px; min-width: 40px;"
    " font-size: 16px; }"
    "QCalendarWidget QAbstractItemView { font-size: 16px; selection-background-color: #37424b;"
    " selection-color: #ffffff; }"
    "QCalendarWidget QSpinBox { font-size: 16px; min-width: 80px; }";

} // namespace

DateIntervalWidget::DateIntervalWidget(QWidget *parent)
    : BasicDialog(parent),
      m_from(makeCalendar(QStringLiteral("calendarWidgetFrom"))),
      m_to(makeCalendar(QStringLiteral("calendarWidgetTo"))),
      m_length(new QLabel(this)),
      m_accept(new QPushButton(QStringLiteral("Ок"), this))
{
    setWindowTitle(QStringLiteral("Выбор интервала"));
    auto *cancel = new QPushButton(QStringLiteral("Отмена"), this);
    m_accept->setDefault(true);
    cancel->setAutoDefault(false);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setSpacing(gap);
    int column = 0;
    for (const char *caption : {"Начало: 00:00:00", "Конец: 23:59:59"}) {
        auto *label = new QLabel(QString::fromUtf8(caption), this);
        MakeLegible(*label);
        grid->addWidget(label, 0, column++);
    }
    grid->addWidget(m_from, 1, 0);
    grid->addWidget(m_to, 1, 1);
    grid->addWidget(makeShortcuts(), 1, 2);
    auto *keys = new QHBoxLayout;
    keys->setSpacing(gap);
    keys->addWidget(m_length, 1);
    keys->addWidget(m_accept);
    keys->addWidget(cancel);
    grid->addLayout(keys, 2, 0, 1, 3);
    MakeLegible(*m_length);
    for (QPushButton *button : {m_accept, cancel})
        MakeTouchable(*button);
    connect(m_from, &QCalendarWidget::selectionChanged, this, &DateIntervalWidget::check);
    connect(m_to, &QCalendarWidget::selectionChanged, this, &DateIntervalWidget::check);
    connect(m_accept, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    check();
}

QCalendarWidget *DateIntervalWidget::makeCalendar(const QString &name)
{
    auto *calendar = new QCalendarWidget(this);
    calendar->setObjectName(name);
    calendar->setLocale(QLocale(QLocale::Russian, QLocale::Russia));
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setMinimumSize(344, 320);
    calendar->setStyleSheet(QLatin1String(calendarStyle));
    for (const auto &[key, icon] :
         {std::pair("qt_calendar_prevmonth", ":/icons/dialogs/left.svg"),
          std::pair("qt_calendar_nextmonth", ":/icons/dialogs/right.svg")}) {
        if (auto *button = calendar->findChild<QToolButton *>(QLatin1String(key)))
            button->setIcon(QIcon(QLatin1String(icon)));
    }
    // Red is for what is abnormal.
    QTextCharFormat plain;
    plain.setForeground(QColor(0x20, 0x26, 0x2c));
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        calendar->setWeekdayTextFormat(day, plain);
    return calendar;
}

QWidget *DateIntervalWidget::makeShortcuts()
{
    auto *shortcuts = new QWidget(this);
    auto *column = new QVBoxLayout(shortcuts);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    addShortcut(column, QStringLiteral("Сегодня"), 0, 0);
    addShortcut(column, QStringLiteral("Вчера"), -1, -1);
    addShortcut(column, QStringLiteral("7 дней"), -6, 0);
    addShortcut(column, QStringLiteral("30 дней"), -29, 0);
    column->addStretch();
    return shortcuts;
}

void DateIntervalWidget::addShortcut(QVBoxLayout *column, const QString &text, int firstDay,
                                     int lastDay)
{
    auto *button = new QPushButton(text, this);
    button->setAutoDefault(false);
    MakeTouchable(*button);
    column->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, firstDay, lastDay] {
        const QDate today = QDate::currentDate();
        m_from->setSelectedDate(today.addDays(firstDay));
        m_to->setSelectedDate(today.addDays(lastDay));
    });
}

void DateIntervalWidget::setInterval(const QDateTime &from, const QDateTime &to)
{
    m_from->setSelectedDate(from.date());
    m_to->setSelectedDate(to.date());
    check();
}

QDateTime DateIntervalWidget::from() const
{
    return m_from->selectedDate().startOfDay();
}

QDateTime DateIntervalWidget::to() const
{
    return m_to->selectedDate().endOfDay();
}

void DateIntervalWidget::check()
{
    const int days = DayInterval{from(), to()}.days();
    m_accept->setEnabled(days > 0);
    m_length->setText(days > 0 ? QStringLiteral("Дней: %1").arg(days)
                               : QStringLiteral("Начало позже конца: выберите другой день"));
}

} // namespace Widgets
