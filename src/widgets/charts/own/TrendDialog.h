#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/own/TrendView.h"
#include "widgets/dialogs/BasicDialog.h"

#include <memory>

class QPushButton;

namespace Widgets {

class SignalList;
class TrendNodes;
class qwidgetChartHistory;

/// Window with a trend of signals that were chosen while the station runs, and the list to choose
/// them from. GUI thread.
class WIDGETS_EXPORT TrendDialog : public BasicDialog, public TrendView
{
    Q_OBJECT

public:
    static constexpr const char *Key = TrendView::Key;

    explicit TrendDialog(QWidget *parent = nullptr);
    ~TrendDialog() override;

    void setSignals(const Nodes::NodeLinks &shown, bool isOwn) override;
    const Nodes::NodeLinks &shownSignals() const { return m_shown; }
    qwidgetChartHistory *chart() const { return m_chart.get(); }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *buildButtons();
    void setShown(const Nodes::NodeLinks &shown);
    void change(unsigned long signal, bool isShown);
    void rebuild();
    void endChart();
    void placeChart();

    QWidget *m_area;
    SignalList *m_list;
    QPushButton *m_choose = nullptr;
    QPushButton *m_toOwn = nullptr;
    std::unique_ptr<TrendNodes> m_nodes;
    std::unique_ptr<qwidgetChartHistory> m_chart; // gone before its nodes
    Nodes::NodeLinks m_shown;
    bool m_isOwn = false;
};

} // namespace Widgets
