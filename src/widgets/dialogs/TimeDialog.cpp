#include "widgets/dialogs/TimeDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/VirtualNumpad.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QIcon>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

#include <algorithm>
#include <array>
#include <cmath>

namespace Widgets {

namespace {

using Axis = Nodes::widgetChartAxis;

constexpr int mostUnits = 999999;
constexpr double noLimit = 1e18; // ms
constexpr int margin = 16;
constexpr int gap = 8;

struct UnitText
{
    Axis::enRangeUnit unit;
    const char *name;
};
constexpr std::array<UnitText, 4> units{{{Axis::RangeSeconds, "Секунды"},
                                         {Axis::RangeMinutes, "Минуты"},
                                         {Axis::RangeHours, "Часы"},
                                         {Axis::RangeDays, "Дни"}}};

int unitsIn(double milliseconds, Axis::enRangeUnit unit)
{
    const double count = std::floor(milliseconds / Axis::Milliseconds(1, unit));
    return int(std::clamp(count, 0.0, double(mostUnits)));
}

} // namespace

TimeDialog::TimeDialog(QWidget *parent) : BasicDialog(parent), m_maximum(noLimit)
{
    setWindowTitle(tr("Интервал времени"));
    build();
    setTime(1, Axis::RangeMinutes);
}

TimeDialog::TimeDialog(double length, Unit unit, QWidget *parent) : TimeDialog(parent)
{
    setTime(length, unit);
}

void TimeDialog::build()
{
    m_unit = new QComboBox(this);
    m_unit->setObjectName(QStringLiteral("unit"));
    m_unit->setMinimumHeight(TouchSize);
    m_unit->setItemDelegate(new QStyledItemDelegate(m_unit)); // heeds the items' size hints
    MakeLegible(*m_unit);
    for (const UnitText &unit : units) {
        m_unit->addItem(tr(unit.name), int(unit.unit));
        m_unit->setItemData(m_unit->count() - 1, QSize(TouchSize, TouchSize), Qt::SizeHintRole);
    }
    m_limit = new QLabel(this);
    m_limit->setObjectName(QStringLiteral("limit"));
    m_limit->setTextFormat(Qt::PlainText);
    MakeLegible(*m_limit);
    auto *ok = new QPushButton(tr("OK"), this);
    auto *cancel = new QPushButton(tr("Отмена"), this);
    ok->setDefault(true);
    cancel->setAutoDefault(false);
    for (QPushButton *button : {ok, cancel})
        MakeTouchable(*button);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(gap);
    column->addWidget(makeCountRow());
    column->addWidget(m_unit);
    column->addWidget(m_limit);
    column->addStretch();
    column->addLayout(buttons);
    connect(m_unit, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &TimeDialog::applyLimit);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

QPushButton *TimeDialog::makeStepButton(const QString &text, const QString &name)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    MakeLegible(*button);
    button->setFixedSize(TouchSize, TouchSize);
    button->setAutoDefault(false);
    button->setAutoRepeat(true);
    return button;
}

QWidget *TimeDialog::makeCountRow()
{
    auto *row = new QWidget(this);
    m_count = new QSpinBox(row);
    m_count->setObjectName(QStringLiteral("count"));
    m_count->setRange(1, mostUnits);
    m_count->setButtonSymbols(QAbstractSpinBox::NoButtons); // too small for a finger
    m_count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_count->setMinimumSize(2 * TouchButton.width(), TouchSize);
    MakeLegible(*m_count);
    auto *less = makeStepButton(QStringLiteral("−"), QStringLiteral("less"));
    auto *more = makeStepButton(QStringLiteral("+"), QStringLiteral("more"));
    auto *numpad = makeStepButton(QString(), QStringLiteral("numpad"));
    numpad->setAutoRepeat(false);
    numpad->setIcon(QIcon(QStringLiteral(":/icons/dialogs/keyboard.svg")));
    numpad->setIconSize({28, 28});
    numpad->setToolTip(tr("Цифры"));
    auto *line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(gap);
    line->addWidget(less);
    line->addWidget(m_count, 1);
    line->addWidget(more);
    line->addWidget(numpad);
    connect(less, &QPushButton::clicked, this, &TimeDialog::stepDown);
    connect(more, &QPushButton::clicked, this, &TimeDialog::stepUp);
    connect(numpad, &QPushButton::clicked, this, &TimeDialog::openNumpad);
    return row;
}

TimeDialog::Unit TimeDialog::unit() const
{
    return Unit(m_unit->currentData().toInt());
}

void TimeDialog::setTime(double length, Unit unit)
{
    m_unit->setCurrentIndex(std::max(m_unit->findData(int(unit)), 0));
    applyLimit();
    m_count->setValue(std::isfinite(length) ? int(std::clamp(length + 0.5, 1.0, double(mostUnits)))
                                            : 1);
}

TimeDialog::Time TimeDialog::getTime() const
{
    return {m_count->value(), unit()};
}

void TimeDialog::setMaxRange(double length, Unit unit)
{
    const double maximum = Axis::Milliseconds(length, unit);
    m_maximum = std::isfinite(maximum) && maximum >= 1000 ? maximum : noLimit;
    auto *offered = qobject_cast<QStandardItemModel *>(m_unit->model());
    for (int row = 0; row < m_unit->count(); ++row) {
        const bool fits = unitsIn(m_maximum, Unit(m_unit->itemData(row).toInt())) >= 1;
        offered->item(row)->setEnabled(fits);
        if (!fits && m_unit->currentIndex() >= row) // the shorter ones fit
            m_unit->setCurrentIndex(row - 1);
    }
    applyLimit();
}

void TimeDialog::applyLimit()
{
    const int most = std::max(unitsIn(m_maximum, unit()), 1);
    m_count->setMaximum(most);
    m_limit->setVisible(m_maximum < noLimit);
    m_limit->setText(tr("От 1 до %1").arg(most));
}

void TimeDialog::step(int by)
{
    m_count->setValue(m_count->value() + by);
}

void TimeDialog::stepUp()
{
    step(1);
}

void TimeDialog::stepDown()
{
    step(-1);
}

void TimeDialog::openNumpad()
{
    DialogRequest request;
    request.parent = window();
    request.element = m_count;
    const QIntValidator whole(1, m_count->maximum()); // outlives the pad
    const OwnedDialog<VirtualNumpad> numpad(request);
    numpad->setValidator(&whole);
    numpad->setText(QString::number(m_count->value()));
    const QPointer<TimeDialog> self = this;
    if (numpad->exec() == QDialog::Accepted && numpad && self)
        m_count->setValue(int(numpad->getValue()));
}

void TimeDialog::showEvent(QShowEvent *event)
{
    BasicDialog::showEvent(event);
    m_count->setFocus();
    m_count->selectAll();
}

} // namespace Widgets
