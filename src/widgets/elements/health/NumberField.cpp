#include "widgets/elements/health/NumberField.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/VirtualNumpad.h"

#include <QDoubleSpinBox>
#include <QDoubleValidator>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>

namespace Widgets {

NumberField::NumberField(QWidget *parent) : QWidget(parent), m_box(new QDoubleSpinBox(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    m_box->setLocale(QLocale::c());
    m_box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    m_box->setMinimumSize(110, TouchSize);
    MakeLegible(*m_box);
    const auto add = [&](const QString &text) {
        auto *button = new QPushButton(text, this);
        button->setAutoDefault(false);
        MakeLegible(*button);
        button->setFixedSize(TouchSize, TouchSize);
        layout->addWidget(button);
        return button;
    };
    QPushButton *less = add(QStringLiteral("−"));
    layout->addWidget(m_box);
    QPushButton *more = add(QStringLiteral("+"));
    QPushButton *numpad = add(QString());
    numpad->setIcon(QIcon(QStringLiteral(":/icons/dialogs/keyboard.svg")));
    numpad->setIconSize({28, 28});
    numpad->setToolTip(QStringLiteral("Цифры"));
    for (QPushButton *button : {less, more})
        button->setAutoRepeat(true);
    connect(less, &QPushButton::clicked, m_box, &QDoubleSpinBox::stepDown);
    connect(more, &QPushButton::clicked, m_box, &QDoubleSpinBox::stepUp);
    connect(numpad, &QPushButton::clicked, this, &NumberField::openNumpad);
    connect(m_box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &NumberField::valueChanged);
}

void NumberField::setRange(double minimum, double maximum, int decimals, double step)
{
    const QSignalBlocker blocker(m_box);
    m_box->setDecimals(decimals);
    m_box->setRange(minimum, maximum);
    m_box->setSingleStep(step);
}

void NumberField::setUnit(const QString &unit)
{
    m_box->setSuffix(unit.isEmpty() ? QString() : QLatin1Char(' ') + unit);
}

void NumberField::setValue(double value)
{
    const QSignalBlocker blocker(m_box);
    m_box->setValue(value);
}

double NumberField::value() const
{
    return m_box->value();
}

void NumberField::openNumpad()
{
    DialogRequest request;
    request.parent = window();
    request.element = m_box;
    QDoubleValidator range(m_box->minimum(), m_box->maximum(), m_box->decimals()); // outlives it
    range.setLocale(QLocale::c());
    const OwnedDialog<VirtualNumpad> numpad(request);
    numpad->setValidator(&range);
    numpad->setText(QLocale::c().toString(m_box->value(), 'f', m_box->decimals()));
    const QPointer<NumberField> self = this;
    if (numpad->exec() == QDialog::Accepted && numpad && self)
        m_box->setValue(numpad->getValue());
}

} // namespace Widgets
