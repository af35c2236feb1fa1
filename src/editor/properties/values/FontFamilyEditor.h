#pragma once

#include "editor/properties/values/ValueEditor.h"

class QFontComboBox;

namespace Editor {

/// Name of a font, from a list of those on this machine or typed for another one.
class FontFamilyEditor : public ValueEditor
{
    Q_OBJECT

public:
    FontFamilyEditor(const ValueContext &context, QWidget *parent);
    ~FontFamilyEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    QFontComboBox *m_box;
};

} // namespace Editor
