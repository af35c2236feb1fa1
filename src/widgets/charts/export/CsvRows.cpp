#include "widgets/charts/export/CsvRows.h"

#include "nodes/archive/HistoryColumn.h"
#include "nodes/values/NumberText.h"
#include "utils/convert/TimeConversions.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

QByteArray quoted(QString text)
{
    text.replace('"', QLatin1String("\"\""));
    return '"' + text.toUtf8() + '"';
}

/// Texts of times that come in order: what a second has alike is made once.
class TimeTexts
{
public:
    void append(QByteArray &text, Nodes::Timestamp time)
    {
        constexpr Nodes::Timestamp second = 1000000;
        if (time < 0) {
            text += CsvRows::time(time);
            return;
        }
        if (time / second != m_second) {
            m_second = time / second;
            m_text = CsvRows::time(m_second * second + 1000); // 0 would be no time
            m_fraction = m_text.indexOf('.') + 1;
        }
        const auto milliseconds = int(time % second / 1000);
        m_text[m_fraction] = char('0' + milliseconds / 100);
        m_text[m_fraction + 1] = char('0' + milliseconds / 10 % 10);
        m_text[m_fraction + 2] = char('0' + milliseconds % 10);
        text += m_text;
    }

private:
    Nodes::Timestamp m_second = -1;
    QByteArray m_text;
    int m_fraction = 0;
};

} // namespace

CsvRows::CsvRows(const std::vector<Signal> &written)
{
    for (const Signal &signal : written) {
        m_names.push_back(',' + quoted(signal.name) + ',');
        m_units.push_back(',' + quoted(signal.unit) + ',');
    }
}

QByteArray CsvRows::header()
{
    return QByteArrayLiteral("\xEF\xBB\xBFtime,signal,value,unit,quality\r\n");
}

QByteArray CsvRows::time(Nodes::Timestamp time)
{
    const QDateTime local = Utils::toLocalTime(time);
    const int minutes = local.offsetFromUtc() / 60;
    return local.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz")).toLatin1() +
           (minutes < 0 ? '-' : '+') +
           QByteArray::number(std::abs(minutes) / 60).rightJustified(2, '0') + ':' +
           QByteArray::number(std::abs(minutes) % 60).rightJustified(2, '0');
}

QByteArray CsvRows::rows(const std::vector<std::shared_ptr<const Nodes::HistoryColumn>> &columns,
                         Nodes::Timestamp from, Nodes::Timestamp to) const
{
    struct Place
    {
        Nodes::Timestamp time;
        std::size_t column;
        std::size_t index;
    };
    std::vector<Place> places;
    for (std::size_t c = 0; c < columns.size(); ++c)
        for (std::size_t i = 0; columns[c] && i < columns[c]->times.size(); ++i)
            if (columns[c]->times[i] >= from && columns[c]->times[i] < to)
                places.push_back({columns[c]->times[i], c, i});
    std::stable_sort(places.begin(), places.end(),
                     [](const Place &a, const Place &b) { return a.time < b.time; });
    QByteArray text;
    TimeTexts times;
    for (const Place &place : places) {
        const Nodes::HistoryColumn &column = *columns[place.column];
        const double number = column.numbers[place.index];
        times.append(text, place.time);
        text += m_names[place.column];
        if (std::isfinite(number))
            text += QByteArray::fromStdString(Nodes::FormatDouble(number));
        text += m_units[place.column];
        text += Nodes::QualityToken(column.qualities[place.index]);
        text += "\r\n";
    }
    return text;
}

} // namespace Widgets
