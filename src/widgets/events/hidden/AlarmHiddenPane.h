#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"
#include "utils/models/SortingModel.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTableView;

namespace Widgets {

class ModelHidden;

/// The list of alarms that are out of the list of alarms: who hid them, why and until when, and the
/// way back. GUI thread.
class WIDGETS_EXPORT AlarmHiddenPane : public QWidget
{
    Q_OBJECT

public:
    /// The model outlives the pane.
    explicit AlarmHiddenPane(ModelHidden &model, QWidget *parent = nullptr);

    QTableView &table() const { return *m_table; }
    Utils::SortingModel &sorting() { return m_sorting; }

signals:
    /// The operator wants this alarm back.
    void backWanted(const Nodes::BasicEvent &alarm);

private:
    void buildTable();
    void follow();
    /// Row of the model; -1 without one.
    int selectedRow() const;

    ModelHidden &m_model;
    Utils::SortingModel m_sorting;
    QTableView *m_table;
    QPushButton *m_back;
    QLabel *m_obstacle;
};

} // namespace Widgets
