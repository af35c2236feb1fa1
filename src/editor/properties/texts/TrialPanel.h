#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/texts/TextLanguage.h"

#include <QHash>
#include <QWidget>

class QLabel;
class QTableWidget;

namespace Editor {

/// What a text gives with values that the user may change. GUI thread.
class TrialPanel : public QWidget
{
    Q_OBJECT

public:
    TrialPanel(const Nodes::TextLanguage &language, const Nodes::NodeLink &node, QWidget *parent);
    ~TrialPanel() override;

    /// Tries the text; values given for names stay with them.
    void setText(const QString &text, bool hasError);
    QString outcome() const;

private:
    void showInputs(const std::vector<Nodes::TrialInput> &inputs);
    void run();

    const Nodes::TextLanguage &m_language;
    Nodes::NodeLink m_node;
    QTableWidget *m_table;
    QLabel *m_outcome;
    std::string m_text;
    std::vector<Nodes::TrialInput> m_inputs{};
    QHash<QString, QString> m_given{}; ///< values by names
    bool m_hasError = false;
};

} // namespace Editor
