#pragma once

#include "editor/properties/values/ValueEditor.h"

class QCheckBox;

namespace Editor {

/// Yes or no.
class BoolEditor : public ValueEditor
{
    Q_OBJECT

public:
    BoolEditor(const ValueContext &context, QWidget *parent);
    ~BoolEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    QCheckBox *m_box;
};

} // namespace Editor
