#pragma once

#include "editor/properties/values/ValueEditor.h"

class QComboBox;

namespace Editor {

/// A text that others have too, such as a unit or an area: typed, or taken from what the project
/// has already, so that one thing has one name.
class SharedTextEditor : public ValueEditor
{
    Q_OBJECT

public:
    SharedTextEditor(const ValueContext &context, QWidget *parent);
    ~SharedTextEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    QComboBox *m_box;
};

} // namespace Editor
