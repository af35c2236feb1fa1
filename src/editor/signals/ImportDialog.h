#pragma once

#include "nodes/project/signals/DelimitedText.h"
#include "nodes/project/signals/SheetPlan.h"

#include <QDialog>

#include <vector>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QTableView;
class QTableWidget;

namespace Editor {

class ImportPreview;
class SheetModel;

/// Asks how a table from elsewhere is to be read: its encoding and separator, and which column of
/// it goes where. Shows of every row what would become of it before anything is changed. GUI
/// thread.
class ImportDialog : public QDialog
{
    Q_OBJECT

public:
    /// Bytes of a file, or of a text in UTF-8. The model has to outlive the dialog.
    ImportDialog(const SheetModel &model, const QByteArray &bytes, QWidget *parent);
    /// Discards a plan that was not taken.
    ~ImportDialog() override;

    /// What was agreed to; the caller carries it out or discards it.
    Nodes::SheetPlan takePlan();

private:
    void makeChoices();
    void makeTables();
    void arrange();
    void read();
    void guessHeader();
    void fillMapping();
    void plan();
    void tellSummary(const Nodes::Result &planned);
    void tellRow();
    std::vector<int> places() const;

    const SheetModel &m_model;
    QByteArray m_bytes;
    QComboBox *m_encoding; ///< children
    QComboBox *m_separator;
    QComboBox *m_kind;
    QCheckBox *m_hasHeader;
    QComboBox *m_shown;
    QTableWidget *m_mapping;
    QTableView *m_table;
    ImportPreview *m_preview;
    QLabel *m_summary;
    QLabel *m_trouble;
    QDialogButtonBox *m_buttons;
    Nodes::TextTable m_text;
    Nodes::SheetPlan m_plan;
};

} // namespace Editor
