#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/health/NuisanceModel.h"

#include <QWidget>

#include <array>
#include <functional>
#include <memory>

class QPushButton;
class QTableView;

namespace Widgets {

/// The alarms that trouble operators, by how they do, and what can be done about the selected one.
/// GUI thread.
class WIDGETS_EXPORT NuisanceList : public QWidget
{
    Q_OBJECT

public:
    using Test = std::function<bool(const Nodes::NodeLink &)>;

    explicit NuisanceList(QWidget *parent = nullptr);

    /// Whether the buttons can do something for an alarm.
    void setTests(Test canJump, Test canTry);
    void setFigures(const std::shared_ptr<const Nodes::AlarmFigures> &figures);
    void select(const Nodes::NodeLink &alarm);
    void show(NuisanceModel::Kind kind);
    NuisanceModel *model() const { return m_model; }
    QTableView *table() const { return m_table; }

signals:
    void jumpPressed(Nodes::NodeLink alarm);
    void tryPressed(Nodes::NodeLink alarm);

private:
    QPushButton *addButton(const QString &text);
    void fill();
    void onSelected();
    Nodes::NodeLink selected() const;

    NuisanceModel *m_model;
    QTableView *m_table;
    std::array<QPushButton *, 4> m_kinds{};
    QPushButton *m_jump = nullptr;
    QPushButton *m_try = nullptr;
    NuisanceModel::Kind m_kind = NuisanceModel::Frequent;
    std::shared_ptr<const Nodes::AlarmFigures> m_figures;
    Test m_canJump;
    Test m_canTry;
};

} // namespace Widgets
