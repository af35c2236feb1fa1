#pragma once

#include "nodes/project/signals/SheetPlan.h"

#include <QDialog>

namespace Editor {

/// Says which cells of a table were not taken over, why, and what to do. The rest has been taken;
/// nothing of the text is lost: it can be copied from here. GUI thread.
class RefusalsDialog : public QDialog
{
    Q_OBJECT

public:
    RefusalsDialog(const std::vector<Nodes::SheetRefusal> &refusals, QWidget *parent);

    /// Opens one that closes by itself; nothing happens without refusals.
    static void tell(const std::vector<Nodes::SheetRefusal> &refusals, QWidget *parent);

private:
    void copy() const;

    std::vector<Nodes::SheetRefusal> m_refusals;
};

} // namespace Editor
