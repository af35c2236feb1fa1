#include "widgets/charts/export/CsvExport.h"

#include "widgets/charts/aids/HistoryAsker.h"
#include "widgets/dialogs/CsvFile.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/system/systemCore.h"

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

constexpr Nodes::Timestamp second = 1000000;
constexpr int firstPieces = 2000;           // of the whole span: nobody knows how dense it is
constexpr std::size_t pieceSamples = 50000; // that a piece is to have

} // namespace

CsvExport::CsvExport(Nodes::systemCore *model, Request request, QObject *parent)
    : QObject(parent),
      m_model(model),
      m_request(std::move(request)),
      m_rows(m_request.texts),
      m_asker(new HistoryAsker(this)),
      m_file(new CsvFile(CsvRows::header())),
      m_next(m_request.from),
      m_piece(std::max(second, (m_request.to - m_request.from) / firstPieces))
{
    m_file->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_file, &QObject::deleteLater);
    connect(this, &CsvExport::opening, m_file, &CsvFile::open);
    connect(this, &CsvExport::closing, m_file, &CsvFile::close);
    connect(m_file, &CsvFile::written, this, &CsvExport::onWritten);
    connect(m_file, &CsvFile::closed, this, &CsvExport::onClosed);
    connect(m_asker, &HistoryAsker::answered, this, &CsvExport::onAnswered);
    m_thread.start();
}

CsvExport::~CsvExport()
{
    m_asker->cancel();
    if (!m_isEnded)
        emit closing(false);
    m_thread.quit();
    m_thread.wait();
}

void CsvExport::start()
{
    emit opening(m_request.file);
}

void CsvExport::cancel()
{
    fail(QStringLiteral("Сохранение отменено"));
}

void CsvExport::fail(const QString &error)
{
    if (m_isEnded || !m_error.isEmpty())
        return;
    m_error = error;
    m_asker->cancel();
    emit closing(false);
}

// One piece is asked for after the one before it is written: a slow disk holds up the reading.
void CsvExport::onWritten(const QString &error)
{
    if (m_isEnded || !m_error.isEmpty())
        return;
    if (!error.isEmpty())
        return fail(error);
    const double whole = double(std::max<Nodes::Timestamp>(1, m_request.to - m_request.from));
    emit progressed(int(100 * double(m_next - m_request.from) / whole));
    if (m_next > m_request.to)
        emit closing(true);
    else
        askNext();
}

void CsvExport::askNext()
{
    m_end = std::min(m_next + m_piece, m_request.to + 1);
    Nodes::HistoryRequest request;
    request.from = m_next;
    request.to = m_end;
    request.nodes = m_request.sources;
    request.priority = Nodes::HistoryPriority::Background;
    const Nodes::Result result = m_asker->ask(m_model, request);
    if (!result)
        fail(QStringLiteral("Архив не ответил: ") +
             QString::fromStdString(result.GetResultTranslated()));
}

void CsvExport::onAnswered(const std::shared_ptr<const Nodes::HistoryAnswer> &answer)
{
    if (m_isEnded || !m_error.isEmpty())
        return;
    std::size_t samples = 0;
    for (std::size_t i = 0; i < answer->columns.size(); ++i) {
        const Nodes::HistoryColumn &column = *answer->columns[i];
        samples += column.times.size();
        if (!column.result)
            return fail(QStringLiteral("Архив не прочитан: %1, %2")
                            .arg(m_request.texts[i].name,
                                 QString::fromStdString(column.result.GetResultTranslated())));
    }
    if (!answer->result)
        return fail(QStringLiteral("Архив не прочитан: ") +
                    QString::fromStdString(answer->result.GetResultTranslated()));
    // Many rows take long to make: there, too. The thread ends before this object does.
    QMetaObject::invokeMethod(m_file,
                              [file = m_file, rows = &m_rows, answer, from = m_next, to = m_end] {
                                  file->write(rows->rows(answer->columns, from, to));
                              });
    m_next = m_end;
    adaptPiece(samples);
}

void CsvExport::adaptPiece(std::size_t samples)
{
    const double wanted = double(m_piece) * double(pieceSamples) / double(samples + 1);
    m_piece = std::max(second, Nodes::Timestamp(std::min(wanted, 2.0 * double(m_piece))));
}

void CsvExport::onClosed(const QString &error)
{
    if (m_isEnded)
        return;
    m_isEnded = true;
    emit finished(m_error.isEmpty() ? error : m_error);
}

} // namespace Widgets
