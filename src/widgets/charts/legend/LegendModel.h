#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/series/SerieColumn.h"

#include <QAbstractTableModel>
#include <QPointer>
#include <QTimer>

#include <array>
#include <vector>

namespace Widgets {

class ISerie;

/// Rows of a legend. What the series tell is kept and asked for again at most four times a second,
/// and only what reads differently is announced. Columns are those of SerieColumn, all of them.
/// Series may go at any time: their rows then stand empty until the next setSeries. GUI thread.
class WIDGETS_EXPORT LegendModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int RefreshInterval = 250; ///< ms

    explicit LegendModel(QObject *parent = nullptr);
    ~LegendModel() override;

    void setSeries(const std::vector<ISerie *> &series);
    /// Null for a row whose series is gone.
    ISerie *serie(int row) const;
    int rowOf(const ISerie *serie) const;
    /// Asks for these columns only; all by default.
    void setAsked(const std::vector<SerieColumn> &columns);
    /// Something has changed that was not asked for yet.
    bool isWaiting() const { return m_timer.isActive(); }

    /// Row that stands out, -1: none.
    void setMarked(int row);

    /// Heading of a column, and what it means in a few words.
    static QString title(SerieColumn column);
    /// Column of a token of the configuration; SerieColumn::Count for one that is unknown.
    static SerieColumn columnOf(const std::string &token);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Takes Qt::CheckStateRole of the first column and Qt::DecorationRole of the colour's.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

public slots:
    /// Has everything asked for again, soon.
    void askAll();
    /// Asks now.
    void refresh();

signals:
    /// A curve looks different now.
    void serieChanged();

private:
    /// What a cell reads; told apart by these.
    struct Cell
    {
        QVariant text;
        QVariant tip;
        QVariant check;
        QVariant line; // its sample
        QVariant quality;
        bool operator==(const Cell &other) const;
    };
    struct Row
    {
        QPointer<ISerie> serie;
        bool isDirty = true;
        std::array<Cell, std::size_t(SerieColumn::Count)> cells;
    };

    Cell ask(const ISerie &serie, SerieColumn column) const;
    void refresh(int row);
    void markSender();

    std::vector<Row> m_rows;
    std::array<bool, std::size_t(SerieColumn::Count)> m_isAsked;
    int m_marked = -1;
    QTimer m_timer; // runs while a row is dirty
};

} // namespace Widgets
