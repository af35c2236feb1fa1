#pragma once

#include <QAbstractSpinBox>

namespace Nodes {
struct PropertyDescriptor;
}

namespace Editor {

/// A number as it is written, whole or with decimals: what is not touched stays as it was, to the
/// last digit. The arrows stay within the property's range; what is typed beyond it is for whoever
/// takes it to refuse.
class NumberSpin : public QAbstractSpinBox
{
    Q_OBJECT

public:
    NumberSpin(const Nodes::PropertyDescriptor &descriptor, QWidget *parent);
    ~NumberSpin() override;

    void setNumber(const QString &text);
    /// With a point for decimals; the text of a fresh node's value when nothing stands there and
    /// that is no number.
    QString number() const;
    void stepBy(int steps) override;
    QValidator::State validate(QString &input, int &position) const override;

signals:
    void typed();
    void stepped();

protected:
    StepEnabled stepEnabled() const override;

private:
    const Nodes::PropertyDescriptor &m_descriptor;
    bool m_isWhole;
    double m_step;
    QString m_from{}; ///< steps begin there when nothing is written
};

} // namespace Editor
