#pragma once

#include "editor/properties/values/ValueEditor.h"

class QTimeEdit;

namespace Editor {

/// A time of day to the second.
class TimeEditor : public ValueEditor
{
    Q_OBJECT

public:
    TimeEditor(const ValueContext &context, QWidget *parent);
    ~TimeEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    QTimeEdit *m_time;
    QString m_text{}; ///< while nobody has touched it, also what is no time
};

} // namespace Editor
