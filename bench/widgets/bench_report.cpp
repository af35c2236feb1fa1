// A long report: pages made, saved as PDF and scrolled, the longest the GUI thread stands still,
// the memory it takes. Beside it what no report can beat: the same texts painted to a PDF with
// nothing else done (QPainter), and put into one document and printed (QTextDocument).
//
//     bench_report [--rows N]      40 rows of 5 columns a page; 20,000 rows are 500 pages
//
// Budget: making the pages takes no longer than painting them with QPainter; no stall over 50 ms;
// memory does not grow with the rows beyond the rows themselves.
#include "widgets/reports/engine/data/SharedRows.h"
#include "widgets/reports/engine/lrdatasourcemanagerintf.h"
#include "widgets/reports/engine/lrpreviewreportwidget.h"
#include "widgets/reports/engine/lrreportengine.h"

#include <QAbstractScrollArea>
#include <QAbstractTableModel>
#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int columns = 5, rowsOnPage = 40;

QString cell(int row, int column)
{
    return column == 0 ? QStringLiteral("Насос подпитки №%1").arg(row)
                       : QString::number(row * 0.37 + column, 'f', 2);
}

class Rows : public LimeReport::SharedRows
{
public:
    explicit Rows(int count) : m_count(count) {}
    QStringList columns() const override { return {"c0", "c1", "c2", "c3", "c4"}; }
    int rowCount() const override { return m_count; }
    QVariant value(int row, int column) const override { return cell(row, column); }

private:
    int m_count;
};

class Model : public QAbstractTableModel, public LimeReport::SharedRowsModel
{
public:
    explicit Model(int count) : m_rows(std::make_shared<Rows>(count)) {}
    int rowCount(const QModelIndex & = {}) const override { return m_rows->rowCount(); }
    int columnCount(const QModelIndex & = {}) const override { return columns; }
    QVariant data(const QModelIndex &, int) const override { return QVariant(); }
    LimeReport::SharedRowsPtr sharedRows() const override { return m_rows; }

private:
    std::shared_ptr<Rows> m_rows;
};

QString item(int x, int y, int width, int height, const QString &content, int borders)
{
    return QStringLiteral("<item Type=\"Object\" ClassName=\"TextItem\"><geometry Type=\"QRect\" "
                          "x=\"%1\" y=\"%2\" "
                          "width=\"%3\" height=\"%4\"/><content Type=\"QString\">%5</content>"
                          "<font Type=\"QFont\" family=\"DejaVu Sans\" pointSize=\"9\"/>"
                          "<borders Type=\"int\" Value=\"%6\"/></item>")
        .arg(x)
        .arg(y)
        .arg(width)
        .arg(height)
        .arg(content)
        .arg(borders);
}

QString pageTemplate()
{
    QString cells;
    for (int column = 0; column < columns; ++column)
        cells += item(column == 0 ? 0 : 300 + column * 300, 0, column == 0 ? 600 : 300, 65,
                      QStringLiteral("$D{rows.c%1}").arg(column), 15);
    return QStringLiteral(
               "<Report><object ClassName=\"LimeReport::ReportEnginePrivate\"><pages "
               "Type=\"Collection\"><item Type=\"Object\"><pageItem Type=\"Object\" "
               "ClassName=\"PageItem\">"
               "<geometry Type=\"QRect\" x=\"0\" y=\"0\" width=\"2100\" height=\"2970\"/>"
               "<children Type=\"Collection\"><item Type=\"Object\" "
               "ClassName=\"PageHeader\"><geometry "
               "Type=\"QRect\" x=\"0\" y=\"0\" width=\"1900\" height=\"250\"/><children "
               "Type=\"Collection\">%1</children></item><item Type=\"Object\" "
               "ClassName=\"Data\"><geometry "
               "Type=\"QRect\" x=\"0\" y=\"0\" width=\"1900\" height=\"65\"/><datasource "
               "Type=\"QString\">rows</datasource><children "
               "Type=\"Collection\">%2</children></item>"
               "</children></pageItem></item></pages></object></Report>")
        .arg(item(0, 0, 1900, 60, "Страница $V{#PAGE} из $V{#PAGE_COUNT}", 0), cells);
}

// Longest time between two turns of the event loop.
class Stall
{
public:
    Stall()
    {
        m_timer.setInterval(0);
        m_since.start();
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            m_longest = std::max(m_longest, m_since.nsecsElapsed() / 1e6);
            m_since.start();
        });
        m_timer.start();
    }
    double longest() const { return m_longest; }

private:
    QTimer m_timer;
    QElapsedTimer m_since;
    double m_longest = 0;
};

double memoryMegabytes(const char *key = "VmRSS:")
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(key))
            return line.mid(int(qstrlen(key))).trimmed().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

template <class Work> double seconds(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return timer.nsecsElapsed() / 1e9;
}

void paintBare(const QString &file, int rows)
{
    QPdfWriter writer(file);
    writer.setResolution(254);
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    QFont font("DejaVu Sans");
    font.setPointSizeF(9);
    painter.setFont(font);
    for (int row = 0; row < rows; ++row) {
        const int line = row % rowsOnPage;
        if (row > 0 && line == 0)
            writer.newPage();
        for (int column = 0; column < columns; ++column) {
            const QRectF box(100 + (column == 0 ? 0 : 300 + column * 300), 350 + line * 65,
                             column == 0 ? 600 : 300, 65);
            painter.drawText(box, Qt::AlignLeft, cell(row, column));
            painter.drawLine(box.topLeft(), box.topRight());
            painter.drawLine(box.bottomLeft(), box.bottomRight());
            painter.drawLine(box.topLeft(), box.bottomLeft());
            painter.drawLine(box.topRight(), box.bottomRight());
        }
    }
}

void paintDocument(const QString &file, int rows)
{
    QString html = QStringLiteral("<table border=\"1\" cellspacing=\"0\">");
    for (int row = 0; row < rows; ++row) {
        html += QStringLiteral("<tr>");
        for (int column = 0; column < columns; ++column)
            html += QStringLiteral("<td>") + cell(row, column) + QStringLiteral("</td>");
        html += QStringLiteral("</tr>");
    }
    QTextDocument document;
    document.setHtml(html + QStringLiteral("</table>"));
    QPdfWriter writer(file);
    document.print(&writer);
}

void report(int rows, const QString &directory)
{
    LimeReport::ReportEngine engine;
    engine.setShowProgressDialog(false);
    Model model(rows);
    if (!engine.loadFromString(pageTemplate(), QStringLiteral("bench")))
        std::printf("template: %s\n", qPrintable(engine.lastError()));
    engine.dataManager()->addModel(QStringLiteral("rows"), &model, false);
    QEventLoop loop;
    QObject::connect(&engine, &LimeReport::ReportEngine::renderFinished, &loop, &QEventLoop::quit);
    const double before = memoryMegabytes();
    Stall stall;
    const double making = seconds([&] {
        engine.render();
        loop.exec();
    });
    const int pages = engine.pageCount();
    std::printf("pages made            %8.0f pages/s (%d pages, %.2f s)\n", pages / making, pages,
                making);
    std::printf("memory of the pages   %8.1f MB\n", memoryMegabytes() - before);
    const double whole =
        seconds([&] { engine.printToPDF(directory + QStringLiteral("/report.pdf")); });
    std::printf("made and saved as PDF %8.0f pages/s\n", pages / whole);
    std::printf("longest stall         %8.1f ms\n", stall.longest());

    std::unique_ptr<LimeReport::PreviewReportWidget> preview(engine.createPreviewWidget());
    preview->resize(1366, 768);
    preview->fitWidth();
    preview->show();
    loop.exec();
    auto *view = qobject_cast<QAbstractScrollArea *>(preview->focusProxy());
    int frames = 0;
    QElapsedTimer frame;
    double slowest = 0;
    const double scrolling = seconds([&] {
        for (; frames < 300; ++frames) {
            frame.start();
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() + 120);
            view->viewport()->repaint(0, view->viewport()->height() - 120,
                                      view->viewport()->width(), 120);
            slowest = std::max(slowest, frame.nsecsElapsed() / 1e6);
        }
    });
    const double zooming = seconds([&] {
        for (int percent = 50; percent < 150; percent += 10) {
            preview->setScalePercent(percent);
            view->viewport()->repaint();
        }
    });
    std::printf("scrolling             %8.0f frames/s, slowest %.1f ms\n", frames / scrolling,
                slowest);
    std::printf("zooming               %8.1f ms a step\n", zooming * 100);

    const double bare = seconds([&] { paintBare(directory + QStringLiteral("/bare.pdf"), rows); });
    std::printf("bare QPainter to PDF  %8.0f pages/s; made and saved takes %.2f times as long\n",
                pages / bare, whole / bare);
    const int few = std::min(rows, 4000);
    const double document =
        seconds([&] { paintDocument(directory + QStringLiteral("/document.pdf"), few); });
    std::printf("QTextDocument to PDF  %8.0f pages/s (of %d pages); ours is %.1f times as fast\n",
                few / double(rowsOnPage) / document, few / rowsOnPage,
                document / few * rows / whole);
    std::printf("peak memory           %8.1f MB\n", memoryMegabytes("VmHWM:"));
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("rows"), QStringLiteral("Rows of the report."),
                      QStringLiteral("number"), QStringLiteral("20000")});
    parser.process(application);
    QTemporaryDir directory;
    report(std::max(1, parser.value(QStringLiteral("rows")).toInt()), directory.path());
    return 0;
}
