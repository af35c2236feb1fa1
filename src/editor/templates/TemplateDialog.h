#pragma once

#include "editor/templates/TemplateMaker.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;

namespace Editor {

/// Asks how a template of the selected elements is called, and what becomes of them. GUI thread.
class TemplateDialog : public QDialog
{
    Q_OBJECT

public:
    explicit TemplateDialog(QWidget *parent);

    /// Fit to be a node's name once the dialog is accepted.
    QString name() const;
    TemplateMaker::Originals originals() const;

private:
    QLineEdit *m_name;
    QCheckBox *m_replace;
};

} // namespace Editor
