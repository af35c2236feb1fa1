#include "editor/properties/values/NumberSpin.h"

#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/values/NumberText.h"

#include <QLineEdit>

#include <algorithm>
#include <cmath>

namespace Editor {

namespace {

// A hundredth of the range, as a power of ten, and one where the range is wide or none.
double stepOf(const Nodes::PropertyDescriptor &d, bool isWhole)
{
    const double span = d.hasRange ? d.maximum - d.minimum : 0;
    if (isWhole || !(span > 0) || span >= 100)
        return 1;
    return std::pow(10.0, std::floor(std::log10(span / 100)));
}

bool isFinite(const QString &text)
{
    const auto number = Nodes::ParseDouble(text.toStdString());
    return number && std::isfinite(*number);
}

} // namespace

NumberSpin::NumberSpin(const Nodes::PropertyDescriptor &descriptor, QWidget *parent)
    : QAbstractSpinBox(parent),
      m_descriptor(descriptor),
      m_isWhole(descriptor.binding.type != Nodes::PropertyType::Double),
      m_step(stepOf(descriptor, m_isWhole))
{
    if (!isFinite(QString::fromStdString(descriptor.defaultText)))
        lineEdit()->setPlaceholderText(QStringLiteral("не задано"));
    connect(lineEdit(), &QLineEdit::textEdited, this, &NumberSpin::typed);
}

NumberSpin::~NumberSpin() = default;

void NumberSpin::setNumber(const QString &text)
{
    const bool isNone = text == QString::fromStdString(m_descriptor.defaultText) && !isFinite(text);
    m_from = text;
    lineEdit()->setText(isNone ? QString() : text);
}

QString NumberSpin::number() const
{
    QString text = lineEdit()->text().trimmed();
    const QString initial = QString::fromStdString(m_descriptor.defaultText);
    if (text.isEmpty() && !isFinite(initial))
        return initial;
    return text.replace(QLatin1Char(','), QLatin1Char('.'));
}

void NumberSpin::stepBy(int steps)
{
    const QString written = lineEdit()->text().isEmpty() ? m_from : number();
    const auto now = Nodes::ParseDouble(written.toStdString());
    const double from = now && std::isfinite(*now) ? *now : 0;
    // Rounded to the step: 0.1 + 0.2 is no number that anybody means.
    double to = std::round((from + steps * m_step) / m_step) * m_step;
    if (std::fmod(from, m_step) != 0)
        to = from + steps * m_step;
    if (m_descriptor.hasRange)
        to = std::clamp(to, m_descriptor.minimum, m_descriptor.maximum);
    if (m_descriptor.binding.type == Nodes::PropertyType::UInt)
        to = std::max(to, 0.0);
    const int decimals = m_step < 1 ? int(std::lround(-std::log10(m_step))) + 2 : 6;
    const std::string rounded = Nodes::FormatFixed(to, m_isWhole ? 0 : decimals);
    const double number = Nodes::ParseDouble(rounded).value_or(to);
    lineEdit()->setText(QString::fromStdString(m_isWhole ? rounded : Nodes::FormatDouble(number)));
    emit stepped();
}

QValidator::State NumberSpin::validate(QString &, int &) const
{
    return QValidator::Acceptable; // refused with a reason when it is taken, not swallowed
}

QAbstractSpinBox::StepEnabled NumberSpin::stepEnabled() const
{
    return StepUpEnabled | StepDownEnabled;
}

} // namespace Editor
