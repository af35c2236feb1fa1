#include "widgets/events/filter/AlarmHeadline.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/WrapLayout.h"
#include "widgets/events/AlarmSigns.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/alarms/systemAlarming.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStringList>

namespace Widgets {

namespace {

constexpr int gap = 8;
constexpr int badgeSize = 28;
constexpr int watchInterval = 1000; // ms

QLabel *makeLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setMinimumHeight(TouchSize);
    MakeLegible(*label);
    return label;
}

void makeBold(QLabel &label)
{
    QFont font = label.font();
    font.setBold(true);
    label.setFont(font);
}

void setCaption(QPushButton &button, const QString &text)
{
    if (button.text() == text)
        return;
    button.setText(text);
    MakeTouchable(button);
}

// The banner calls their sum the same.
QString hiddenText(const AlarmHeadline::Facts &facts)
{
    QStringList parts;
    const auto add = [&parts](int count, const char *what) {
        if (count > 0)
            parts << QStringLiteral("%1: %2").arg(QString::fromUtf8(what)).arg(count);
    };
    add(facts.shelved, "отложено");
    add(facts.suppressed, "подавлено");
    add(facts.outOfService, "выведено");
    const int all = facts.shelved + facts.suppressed + facts.outOfService;
    const QString sum = QStringLiteral("Скрыто: %1").arg(all);
    if (parts.isEmpty())
        return sum;
    const bool isOneKind = parts.size() == 1;
    return QStringLiteral("%1 (%2)").arg(sum, isOneKind ? parts.first().section(':', 0, 0)
                                                        : parts.join(QStringLiteral(", ")));
}

} // namespace

AlarmHeadline::AlarmHeadline(QWidget *parent)
    : QWidget(parent),
      m_stopped(makeLabel(this)),
      m_flood(makeLabel(this)),
      m_warningText(makeLabel(this)),
      m_warning(makeWarning()),
      m_row(new WrapLayout)
{
    m_flood->setObjectName(QStringLiteral("flood"));
    m_flood->setStyleSheet(
        QStringLiteral("QLabel { background: #f0b400; color: #1c2024; padding: 0 8px; }"));
    makeBold(*m_flood);
    m_counts = makeLabel(this);
    m_counts->setObjectName(QStringLiteral("counts"));
    m_counts->setToolTip(QStringLiteral("Ждут квитирования"));
    m_row->setSpacing(gap);
    m_row->addWidget(m_counts);
    m_newAbove = makeButton({}, QStringLiteral("newAbove"));
    connect(m_newAbove, &QPushButton::clicked, this, &AlarmHeadline::beginningWanted);
    m_row->addStretch();
    m_details = makeButton(QStringLiteral("Подробно"), QStringLiteral("details"));
    m_hidden = makeButton(QStringLiteral("Скрыто: 0"), QStringLiteral("hiddenAlarms"));
    m_filter = makeButton(QStringLiteral("Фильтр"), QStringLiteral("filter"));
    for (QPushButton *fold : {m_details, m_hidden, m_filter})
        fold->setCheckable(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(m_stopped);
    column->addWidget(m_flood);
    column->addWidget(m_warning);
    column->addLayout(m_row);
    m_stopped->setObjectName(QStringLiteral("stopped"));
    m_stopped->setText(QStringLiteral("✕ Тревоги не отслеживаются: список устарел"));
    m_stopped->setStyleSheet(
        QStringLiteral("QLabel { background: #c62828; color: #ffffff; padding: 0 8px; }"));
    makeBold(*m_stopped);
    m_stopped->hide();
    m_watch.setInterval(watchInterval);
    connect(&m_watch, &QTimer::timeout, this, &AlarmHeadline::watch);
    m_watch.start();
    setFacts(Facts());
}

// Nothing is announced any more once the subsystem is stopped.
void AlarmHeadline::watch()
{
    const Nodes::systemAlarming *alarming = DesktopContext::alarming();
    const bool isRunning = alarming && alarming->GetState() == Nodes::NodeState::Running;
    m_stopped->setVisible(m_wasRunning && !isRunning);
    m_wasRunning = m_wasRunning || isRunning;
}

QPushButton *AlarmHeadline::makeButton(const QString &text, const QString &name)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::NoFocus);
    MakeTouchable(*button);
    m_row->addWidget(button);
    return button;
}

QWidget *AlarmHeadline::makeWarning()
{
    auto *warning = new QWidget(this);
    warning->setObjectName(QStringLiteral("warning"));
    warning->setAttribute(Qt::WA_StyledBackground);
    warning->setStyleSheet(QStringLiteral("#warning { background: #ffffff; border: 2px solid "
                                          "#c62828; }"));
    auto *sign = new QLabel(warning);
    sign->setPixmap(AlarmSigns::badge(Nodes::AlarmState::ActiveUnacked, 1, badgeSize));
    m_warningText->setObjectName(QStringLiteral("warningText"));
    m_warningText->setWordWrap(true);
    makeBold(*m_warningText);
    auto *reset = new QPushButton(QStringLiteral("Показать"), warning);
    reset->setFocusPolicy(Qt::NoFocus);
    MakeTouchable(*reset);
    connect(reset, &QPushButton::clicked, this, &AlarmHeadline::resetWanted);
    auto *row = new QHBoxLayout(warning);
    row->setContentsMargins(gap, 4, 4, 4);
    row->setSpacing(gap);
    row->addWidget(sign);
    row->addWidget(m_warningText, 1);
    row->addWidget(reset);
    return warning;
}

void AlarmHeadline::setFacts(const Facts &facts)
{
    m_flood->setVisible(facts.floodCount >= 0);
    m_flood->setText(QStringLiteral("Лавина тревог: %1 за 10 мин").arg(facts.floodCount));
    m_warning->setVisible(facts.hiddenUrgent > 0);
    m_warningText->setText(QStringLiteral("Не показаны неквитированные тревоги приоритета 1: %1")
                               .arg(facts.hiddenUrgent));
    m_counts->setText(QStringLiteral("Показано %1 из %2, ждут: %3")
                          .arg(facts.shown)
                          .arg(facts.all)
                          .arg(facts.waiting));
    m_newAbove->setVisible(facts.newAbove > 0);
    setCaption(*m_newAbove, QStringLiteral("▲ Выше новых: %1").arg(facts.newAbove));
    setCaption(*m_hidden, hiddenText(facts));
    setCaption(*m_filter,
               facts.isFiltered ? QStringLiteral("Фильтр включён") : QStringLiteral("Фильтр"));
    watch();
}

void AlarmHeadline::setRoom(int width)
{
    m_row->setRoom(width);
    layout()->invalidate();
    updateGeometry();
}

} // namespace Widgets
