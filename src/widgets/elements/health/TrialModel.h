#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/health/TrialVariant.h"

#include <QAbstractTableModel>

#include <vector>

namespace Widgets {

/// Settings of an alarm side by side with what they would have done. The first row is what the
/// journal has, the second the settings that count now. GUI thread.
class WIDGETS_EXPORT TrialModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        Name,
        Limit,
        Deadband,
        OnDelay,
        OffDelay,
        Raised,
        Chattering,
        Fleeting,
        MostPerBin,
        ColumnCount
    };
    enum Row { JournalRow, PresentRow, FirstVariantRow };

    using QAbstractTableModel::QAbstractTableModel;

    void setVariants(std::vector<TrialVariant> variants);
    const std::vector<TrialVariant> &variants() const { return m_variants; }
    /// What that row would do is not known any more.
    void setTuning(int row, const Nodes::AlarmTuning &tuning);
    void setFigures(int row, const Nodes::AlarmFigures &figures);
    /// A variant of its own, that is known and is not what counts now.
    bool isAcceptable(int row) const;

    /// What that row has otherwise than what counts now, a line each: "Предел: 80 → 85".
    QString changesText(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString settingText(const TrialVariant &variant, int column) const;
    QString figureText(const TrialVariant &variant, int column) const;
    bool isChanged(const TrialVariant &variant, int column) const;
    void tellRow(int row);

    std::vector<TrialVariant> m_variants;
};

} // namespace Widgets
