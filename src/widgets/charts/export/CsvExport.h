#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/export/CsvRows.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Timestamp.h"

#include <QObject>
#include <QThread>

#include <memory>
#include <vector>

namespace Nodes {
struct HistoryAnswer;
class systemCore;
} // namespace Nodes

namespace Widgets {

class CsvFile;
class HistoryAsker;

/// Writes what an archive holds of some signals over a span into a CSV file, every sample. Read
/// piece by piece, so that memory holds one piece only, and written on a thread of its own. The
/// file appears under its name when all of it is written. GUI thread.
class WIDGETS_EXPORT CsvExport : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QString file;
        Nodes::Timestamp from = 0;
        Nodes::Timestamp to = 0; ///< inclusive
        Nodes::NodeLinks sources;
        std::vector<CsvRows::Signal> texts; ///< one for each
    };

    /// The model outlives the export.
    CsvExport(Nodes::systemCore *model, Request request, QObject *parent = nullptr);
    ~CsvExport() override;

    void start();
    /// Leaves no file.
    void cancel();

signals:
    /// 0 to 100.
    void progressed(int percent);
    /// Ended; "" after success, `Cancelled` text included otherwise, for operators.
    void finished(const QString &error);

    // To the writing thread:
    void opening(const QString &file);
    void closing(bool isKept);

private:
    void askNext();
    void onAnswered(const std::shared_ptr<const Nodes::HistoryAnswer> &answer);
    void onWritten(const QString &error);
    void onClosed(const QString &error);
    void fail(const QString &error);
    void adaptPiece(std::size_t samples);

    Nodes::systemCore *m_model;
    const Request m_request;
    CsvRows m_rows;
    HistoryAsker *m_asker;
    QThread m_thread;
    CsvFile *m_file;          // lives on the thread, deleted when that ends
    Nodes::Timestamp m_next;  // begin of what is asked next
    Nodes::Timestamp m_piece; // length of a piece, microseconds
    Nodes::Timestamp m_end = 0;
    QString m_error;
    bool m_isEnded = false;
};

} // namespace Widgets
