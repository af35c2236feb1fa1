#include "widgets/elements/health/HealthCsv.h"

#include "widgets/charts/export/CsvRows.h"
#include "widgets/dialogs/SaveFileQuestion.h"
#include "widgets/elements/health/HealthText.h"

#include "nodes/alarms/statistics/AlarmAreas.h"
#include "nodes/alarms/statistics/AlarmMeasure.h"

#include <QRunnable>
#include <QSaveFile>

namespace Widgets {

namespace {

QByteArray quoted(const std::string &text)
{
    QByteArray bytes = QByteArray::fromStdString(text);
    bytes.replace('"', "\"\"");
    return '"' + bytes + '"';
}

QByteArray number(double value)
{
    return QByteArray::number(value, 'g', 10);
}

void addMeasures(QByteArray &text, const Nodes::AlarmFigures &figures)
{
    text += "Показатель,Значение,Единица,Рекомендуется,Оценка\r\n";
    for (const Nodes::AlarmMeasure &measure : Nodes::MeasuresOf(figures)) {
        const bool isShare = measure.unit == Nodes::AlarmMeasure::Share;
        const bool isTime = measure.unit == Nodes::AlarmMeasure::Seconds;
        text += quoted(measure.name) + ',';
        if (measure.isKnown)
            text += number(isShare ? measure.value * 100 : measure.value);
        text += QByteArray(isShare ? ",%," : isTime ? ",с," : ",,");
        text += quoted(measure.target) + ',' + HealthText::verdict(measure.verdict).toUtf8();
        text += "\r\n";
    }
}

void addAlarms(QByteArray &text, const Nodes::AlarmFigures &figures)
{
    text += "\r\nТревога,Источник,Приоритет,Возникла,Дребезг,Мимолётно,Стояла (с),Стоит\r\n";
    for (const Nodes::AlarmCount &alarm : figures.alarms) {
        text += quoted(alarm.text) + ',' + quoted(alarm.source) + ',';
        text +=
            QByteArray::number(alarm.priority) + ',' + QByteArray::number(quint64(alarm.raised));
        text += ',' + QByteArray::number(quint64(alarm.chattering));
        text += ',' + QByteArray::number(quint64(alarm.fleeting));
        text += ',' + QByteArray::number(qint64(alarm.longestStanding / 1000000));
        text += alarm.isStanding ? ",да\r\n" : ",нет\r\n";
    }
}

void addAreas(QByteArray &text, const Nodes::AlarmFigures &figures)
{
    text += "\r\nУчасток,Тревог,Разных,Дребезжащих,Мимолётных,Стоящих\r\n";
    for (const Nodes::AlarmArea &area : Nodes::AlarmAreasOf(figures)) {
        text += quoted(area.name) + ',' + QByteArray::number(quint64(area.raised));
        for (const std::size_t count : {area.alarms, area.chattering, area.fleeting, area.standing})
            text += ',' + QByteArray::number(quint64(count));
        text += "\r\n";
    }
}

void addShifts(QByteArray &text, const Nodes::AlarmFigures &figures)
{
    text += "\r\nСмена,Начало,Конец,Тревог\r\n";
    for (const Nodes::AlarmShift &shift : figures.shifts)
        text += quoted(shift.name) + ',' + CsvRows::time(shift.begin) + ',' +
                CsvRows::time(shift.end) + ',' + QByteArray::number(quint64(shift.raised)) + "\r\n";
}

class Writing : public QRunnable
{
public:
    Writing(HealthCsv &csv, QString file, std::shared_ptr<const Nodes::AlarmFigures> figures)
        : m_csv(csv), m_file(std::move(file)), m_figures(std::move(figures))
    {
    }

    // The object waits for its tasks before it goes.
    void run() override
    {
        QSaveFile output(m_file);
        const QByteArray text = HealthCsv::text(*m_figures);
        const bool isWritten = output.open(QIODevice::WriteOnly) &&
                               output.write(text) == text.size() && output.commit();
        const QString error =
            isWritten ? QString() : SaveFileQuestion::failure(m_file, output.errorString());
        QMetaObject::invokeMethod(
            &m_csv, [csv = &m_csv, file = m_file, error] { emit csv->saved(file, error); },
            Qt::QueuedConnection);
    }

private:
    HealthCsv &m_csv;
    const QString m_file;
    const std::shared_ptr<const Nodes::AlarmFigures> m_figures;
};

} // namespace

HealthCsv::~HealthCsv()
{
    m_threads.waitForDone();
}

QByteArray HealthCsv::text(const Nodes::AlarmFigures &figures)
{
    QByteArray text = QByteArrayLiteral("\xEF\xBB\xBF");
    text += "Начало," + CsvRows::time(figures.begin) + "\r\nКонец," + CsvRows::time(figures.end) +
            "\r\n\r\n";
    addMeasures(text, figures);
    addAlarms(text, figures);
    addAreas(text, figures);
    addShifts(text, figures);
    text += "\r\nНачало 10 минут,Тревог\r\n";
    for (std::size_t i = 0; i < figures.perBin.size(); ++i)
        text += CsvRows::time(figures.begin + Nodes::Timestamp(i) * Nodes::AlarmFigures::Bin) +
                ',' + QByteArray::number(figures.perBin[i]) + "\r\n";
    return text;
}

void HealthCsv::save(const QString &file, const std::shared_ptr<const Nodes::AlarmFigures> &figures)
{
    m_threads.start(new Writing(*this, file, figures));
}

} // namespace Widgets
