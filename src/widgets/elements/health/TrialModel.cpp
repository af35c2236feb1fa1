#include "widgets/elements/health/TrialModel.h"

#include "nodes/values/NumberText.h"

#include <QFont>

namespace Widgets {

namespace {

const QString nothing = QStringLiteral("—");

QString numberText(const std::optional<double> &number)
{
    return number ? QString::fromStdString(Nodes::FormatExact(*number)) : nothing;
}

QString secondsText(const std::optional<int> &milliseconds)
{
    return milliseconds ? QString::number(*milliseconds / 1000.0) : nothing;
}

} // namespace

void TrialModel::setVariants(std::vector<TrialVariant> variants)
{
    beginResetModel();
    m_variants = std::move(variants);
    endResetModel();
}

void TrialModel::tellRow(int row)
{
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void TrialModel::setTuning(int row, const Nodes::AlarmTuning &tuning)
{
    if (row < FirstVariantRow || row >= rowCount())
        return;
    TrialVariant &variant = m_variants[std::size_t(row)];
    variant.tuning = tuning;
    variant.figures.reset();
    tellRow(row);
}

void TrialModel::setFigures(int row, const Nodes::AlarmFigures &figures)
{
    if (row < 0 || row >= rowCount())
        return;
    m_variants[std::size_t(row)].figures = figures;
    tellRow(row);
}

bool TrialModel::isAcceptable(int row) const
{
    if (row < FirstVariantRow || row >= rowCount())
        return false;
    const TrialVariant &variant = m_variants[std::size_t(row)];
    return variant.figures && variant.tuning != m_variants[PresentRow].tuning;
}

int TrialModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_variants.size());
}

int TrialModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString TrialModel::settingText(const TrialVariant &variant, int column) const
{
    if (!variant.tuning)
        return nothing;
    switch (column) {
    case Limit:
        return numberText(variant.tuning->limit);
    case Deadband:
        return numberText(variant.tuning->deadband);
    case OnDelay:
        return secondsText(variant.tuning->onDelay);
    default:
        return secondsText(variant.tuning->offDelay);
    }
}

QString TrialModel::figureText(const TrialVariant &variant, int column) const
{
    if (!variant.figures)
        return QStringLiteral("?");
    const Nodes::AlarmFigures &figures = *variant.figures;
    const Nodes::AlarmCount count =
        figures.alarms.empty() ? Nodes::AlarmCount() : figures.alarms.front();
    switch (column) {
    case Chattering:
        return QString::number(count.chattering);
    case Fleeting:
        return QString::number(count.fleeting);
    case MostPerBin:
        return QString::number(figures.mostPerBin);
    default:
        break;
    }
    const auto &present = m_variants[PresentRow].figures;
    QString text = QString::number(figures.raised);
    if (&variant > &m_variants[PresentRow] && present && present->raised > 0) {
        const double change = (double(figures.raised) / double(present->raised) - 1) * 100;
        text += QStringLiteral(" (%1%2 %)")
                    .arg(change > 0 ? QStringLiteral("+") : QString())
                    .arg(change, 0, 'f', 0);
        text.replace('-', QChar(0x2212));
    }
    return text;
}

bool TrialModel::isChanged(const TrialVariant &variant, int column) const
{
    if (column < Limit || column > OffDelay || &variant <= &m_variants[PresentRow])
        return false;
    return settingText(variant, column) != settingText(m_variants[PresentRow], column);
}

QString TrialModel::changesText(int row) const
{
    QStringList lines;
    for (int column = Limit; column <= OffDelay && isAcceptable(row); ++column) {
        const TrialVariant &variant = m_variants[std::size_t(row)];
        if (isChanged(variant, column))
            lines << QStringLiteral("%1: %2 → %3")
                         .arg(headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(),
                              settingText(m_variants[PresentRow], column),
                              settingText(variant, column));
    }
    return lines.join('\n');
}

QVariant TrialModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const TrialVariant &variant = m_variants[std::size_t(index.row())];
    const int column = index.column();
    if (role == Qt::TextAlignmentRole && column != Name)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::FontRole && isChanged(variant, column)) {
        QFont font;
        font.setPointSize(11);
        font.setBold(true);
        return font;
    }
    if (role != Qt::DisplayRole)
        return {};
    if (column == Name)
        return variant.name;
    return column <= OffDelay ? settingText(variant, column) : figureText(variant, column);
}

QVariant TrialModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QString names[] = {QStringLiteral("Вариант"),
                                    QStringLiteral("Предел"),
                                    QStringLiteral("Зона"),
                                    QStringLiteral("Задержка, с"),
                                    QStringLiteral("Возврат, с"),
                                    QStringLiteral("Тревог"),
                                    QStringLiteral("Дребезг"),
                                    QStringLiteral("Мимолётных"),
                                    QStringLiteral("Больше всего за 10 мин")};
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 ||
        section >= ColumnCount)
        return {};
    return names[section];
}

} // namespace Widgets
