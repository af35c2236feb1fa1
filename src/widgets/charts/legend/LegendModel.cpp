#include "widgets/charts/legend/LegendModel.h"

#include "widgets/charts/legend/SerieColor.h"
#include "widgets/charts/overlay/ShiftText.h"
#include "widgets/charts/series/ISerie.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include <QColor>
#include <QFont>
#include <QPen>

#include <utility>

namespace Widgets {

namespace {

constexpr int columnTotal = int(SerieColumn::Count);

struct ColumnText
{
    const char *token;
    const char *title;
    const char *tip;
};

// In the order of SerieColumn.
constexpr ColumnText texts[columnTotal] = {
    {"visible", "", "Показать или скрыть кривую"},
    {"color", "", "Цвет и вид кривой"},
    {"name", "Название", "Название сигнала"},
    {"cursor", "Визир", "Значение под визиром"},
    {"value", "Значение", "Текущее значение"},
    {"minimum", "Мин", "Наименьшее в видимом интервале"},
    {"maximum", "Макс", "Наибольшее в видимом интервале"},
    {"unit", "Ед.", "Единица измерения"},
    {"axis", "Ось", "Ось значений"},
};

// Merged with the view's: only what is set here counts.
QVariant boldFont()
{
    QFont font;
    font.setBold(true);
    return font;
}

bool isNumber(SerieColumn column)
{
    return column == SerieColumn::CursorValue || column == SerieColumn::Value ||
           column == SerieColumn::Minimum || column == SerieColumn::Maximum;
}

} // namespace

bool LegendModel::Cell::operator==(const Cell &other) const
{
    return text == other.text && tip == other.tip && check == other.check && line == other.line &&
           quality == other.quality;
}

LegendModel::LegendModel(QObject *parent) : QAbstractTableModel(parent)
{
    m_isAsked.fill(true);
    m_timer.setSingleShot(true);
    m_timer.setInterval(RefreshInterval);
    connect(&m_timer, &QTimer::timeout, this, qOverload<>(&LegendModel::refresh));
}

LegendModel::~LegendModel() = default;

void LegendModel::setSeries(const std::vector<ISerie *> &series)
{
    beginResetModel();
    for (const Row &row : m_rows)
        if (row.serie)
            row.serie->disconnect(this);
    m_rows.clear();
    m_marked = -1;
    for (ISerie *serie : series) {
        Row row;
        row.serie = serie;
        m_rows.push_back(row);
        connect(serie, &ISerie::informationChaged, this, &LegendModel::markSender);
        connect(serie, &ISerie::propertyChanged, this, &LegendModel::markSender);
        connect(serie, &ISerie::offsetYChanged, this, &LegendModel::markSender);
    }
    for (Row &row : m_rows)
        for (int column = 0; column < columnTotal; ++column)
            row.cells[std::size_t(column)] = ask(*row.serie, SerieColumn(column));
    endResetModel();
}

ISerie *LegendModel::serie(int row) const
{
    return row >= 0 && row < int(m_rows.size()) ? m_rows[std::size_t(row)].serie.data() : nullptr;
}

int LegendModel::rowOf(const ISerie *serie) const
{
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        if (serie && m_rows[row].serie == serie)
            return int(row);
    return -1;
}

void LegendModel::setAsked(const std::vector<SerieColumn> &columns)
{
    m_isAsked.fill(false);
    for (const SerieColumn column : columns)
        m_isAsked[std::size_t(column)] = true;
    m_isAsked[std::size_t(SerieColumn::Visible)] = true; // names of hidden curves are greyed
    askAll();
}

void LegendModel::setMarked(int row)
{
    for (const int changed : {std::exchange(m_marked, row), row})
        if (changed >= 0 && changed < rowCount())
            emit dataChanged(index(changed, 0), index(changed, columnTotal - 1));
}

QString LegendModel::title(SerieColumn column)
{
    const char *title = texts[std::size_t(column)].title;
    return QString::fromUtf8(*title ? title : texts[std::size_t(column)].tip);
}

SerieColumn LegendModel::columnOf(const std::string &token)
{
    for (int column = 0; column < columnTotal; ++column)
        if (token == texts[column].token)
            return SerieColumn(column);
    return SerieColumn::Count;
}

int LegendModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int LegendModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columnTotal;
}

QVariant LegendModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto column = SerieColumn(index.column());
    const Row &row = m_rows[std::size_t(index.row())];
    const Cell &cell = row.cells[std::size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
        return cell.text;
    case Qt::ToolTipRole:
        return cell.tip;
    case Qt::CheckStateRole:
        return cell.check;
    case SerieLineRole:
        return cell.line;
    case SerieQualityRole:
        return cell.quality;
    case Qt::TextAlignmentRole:
        return int((isNumber(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case Qt::BackgroundRole:
        return index.row() == m_marked ? QVariant(QColor(0xd0, 0xdb, 0xe6)) : QVariant();
    case Qt::FontRole:
        return column == SerieColumn::Name && index.row() == m_marked ? boldFont() : QVariant();
    case Qt::ForegroundRole:
        if (row.cells[std::size_t(SerieColumn::Visible)].check.toInt() == Qt::Unchecked)
            return QColor(0x7d, 0x86, 0x8d);
        return {};
    default:
        return {};
    }
}

QVariant LegendModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnTotal)
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromUtf8(texts[section].title);
    if (role == Qt::ToolTipRole)
        return QString::fromUtf8(texts[section].tip);
    if (role == Qt::TextAlignmentRole)
        return int((isNumber(SerieColumn(section)) ? Qt::AlignRight : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    return {};
}

bool LegendModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    ISerie *target = index.isValid() ? serie(index.row()) : nullptr;
    const auto column = SerieColumn(index.column());
    if (target && column == SerieColumn::Visible && role == Qt::CheckStateRole)
        target->setVisible(value.toInt() == Qt::Checked);
    else if (target && column == SerieColumn::Color && role == Qt::DecorationRole)
        SetSerieColor(*target, value.value<QColor>());
    else
        return false;
    refresh(index.row());
    emit serieChanged();
    return true;
}

void LegendModel::askAll()
{
    for (Row &row : m_rows)
        row.isDirty = true;
    if (!m_timer.isActive())
        m_timer.start();
}

void LegendModel::refresh()
{
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        if (m_rows[row].isDirty)
            refresh(int(row));
}

LegendModel::Cell LegendModel::ask(const ISerie &serie, SerieColumn column) const
{
    const auto get = [&](int role) { return serie.getData(int(column), role); };
    Cell cell;
    if (column == SerieColumn::Visible) {
        cell.check = get(Qt::CheckStateRole);
    } else if (column == SerieColumn::Color) {
        cell.line = get(SerieLineRole);
    } else {
        cell.text = get(Qt::DisplayRole);
        cell.quality = get(SerieQualityRole);
    }
    const double shift = column == SerieColumn::Name ? ShiftOf(serie.getNode()) : 0;
    if (shift > 0)
        cell.text = QStringLiteral("%1 (%2)").arg(cell.text.toString(), ShiftText(shift));
    cell.tip = get(Qt::ToolTipRole);
    return cell;
}

void LegendModel::refresh(int number)
{
    Row &row = m_rows[std::size_t(number)];
    row.isDirty = false;
    if (!row.serie)
        return;
    int first = columnTotal;
    int last = -1;
    for (int column = 0; column < columnTotal; ++column) {
        if (!m_isAsked[std::size_t(column)])
            continue;
        Cell cell = ask(*row.serie, SerieColumn(column));
        if (cell == row.cells[std::size_t(column)])
            continue;
        row.cells[std::size_t(column)] = std::move(cell);
        first = qMin(first, column);
        last = column;
    }
    if (last >= 0)
        emit dataChanged(index(number, first), index(number, last));
}

void LegendModel::markSender()
{
    const int row = rowOf(qobject_cast<const ISerie *>(sender()));
    if (row < 0)
        return;
    m_rows[std::size_t(row)].isDirty = true;
    if (!m_timer.isActive())
        m_timer.start();
}

} // namespace Widgets
