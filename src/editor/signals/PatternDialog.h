#pragma once

#include "editor/signals/SheetEdits.h"

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace Editor {

/// Asks for the names of many nodes by a pattern, their kind, and a property that counts up; shows
/// what will come of it. GUI thread.
class PatternDialog : public QDialog
{
    Q_OBJECT

public:
    PatternDialog(const SheetModel &model, QWidget *parent);

    const std::vector<std::string> &names() const { return m_names; }
    const Nodes::KindInfo &kind() const;
    /// Of the model; -1: none counts.
    int column() const;
    double first() const;
    double step() const;

private:
    void offerColumns();
    void check();

    const SheetModel &m_model;
    std::vector<const Nodes::KindInfo *> m_kinds;
    std::vector<std::string> m_names;
    QLineEdit *m_pattern; ///< children
    QComboBox *m_kind;
    QComboBox *m_column;
    QSpinBox *m_first;
    QSpinBox *m_step;
    QLabel *m_preview;
    QDialogButtonBox *m_buttons;
};

} // namespace Editor
