#include "nodes/FileSizeLimit.h"
#include "widgets/reports/LaidOut.h"
#include "widgets/reports/engine/lrdatasourcemanagerintf.h"
#include "widgets/reports/engine/lrpreviewreportwidget.h"
#include "widgets/reports/engine/lrreportengine.h"
#include "widgets/reports/engine/preview/PageView.h"

#include <QAbstractScrollArea>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace LimeReport;
using namespace TemplateText;

namespace {

// 40 rows a page.
QString rowsTemplate(const QString &content = QStringLiteral("$D{rows.name}"))
{
    return report({page(
        {band("PageHeader", "ph", 170, {item("$V{title}, $V{#PAGE} / $V{#PAGE_COUNT}")}),
         band("Data", "data", 65, {item(content, 0, 0, 1500, 65)}, text("datasource", "rows"))})});
}

QStandardItemModel *rows(int count)
{
    auto *model = new QStandardItemModel(count, 1);
    model->setHorizontalHeaderLabels({"name"});
    for (int row = 0; row < count; ++row)
        model->setData(model->index(row, 0), QStringLiteral("Насос №%1").arg(row + 1));
    return model;
}

QString textOf(const QString &pdf)
{
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {"-layout", pdf, "-"});
    return reader.waitForFinished() ? QString::fromUtf8(reader.readAllStandardOutput()) : QString();
}

} // namespace

/// The whole way: template and models to pages, files and the preview.
class tst_report_engine : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_engine = std::make_unique<ReportEngine>();
        m_engine->setShowProgressDialog(false);
    }

    void cleanup() { m_engine.reset(); }

    void pdf()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath("отчёт.pdf");
        QVERIFY2(m_engine->loadFromString(rowsTemplate(), "Сводка"),
                 qPrintable(m_engine->lastError()));
        m_engine->dataManager()->addModel("rows", rows(100), true);
        m_engine->dataManager()->setReportVariable("title", "Котельная");
        QVERIFY2(m_engine->printToPDF(file), qPrintable(m_engine->lastError()));
        QCOMPARE(m_engine->lastError(), QString());
        QCOMPARE(m_engine->pageCount(), 3);

        QStringList found;
        const QStringList pages = textOf(file).split(QChar('\f'), Qt::SkipEmptyParts);
        QCOMPARE(pages.size(), 3);
        for (int index = 0; index < 3; ++index) {
            QStringList lines = pages[index].split(QChar('\n'), Qt::SkipEmptyParts);
            QCOMPARE(lines.takeFirst().trimmed(),
                     QStringLiteral("Котельная, %1 / 3").arg(index + 1));
            for (const QString &line : qAsConst(lines))
                found.append(line.trimmed());
        }
        QCOMPARE(found.size(), 100);
        for (int row = 0; row < 100; ++row)
            QCOMPARE(found[row], QStringLiteral("Насос №%1").arg(row + 1));
        QFile saved(file);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        const QByteArray bytes = saved.readAll();
        QVERIFY(bytes.contains("/FontFile2") && bytes.contains("/Title"));
    }

    void unwritable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("no such directory") << "none/at/all.pdf";
        QTest::newRow("a directory") << "directory";
        QTest::newRow("a pipe") << "pipe";
    }

    void unwritable()
    {
        QFETCH(QString, name);
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir("directory"));
        QCOMPARE(mkfifo(QFile::encodeName(dir.filePath("pipe")).constData(), 0600), 0);
        QVERIFY(m_engine->loadFromString(rowsTemplate()));
        m_engine->dataManager()->addModel("rows", rows(1), true);
        QVERIFY(!m_engine->printToPDF(dir.filePath(name)));
        QVERIFY2(m_engine->lastError().contains(name), qPrintable(m_engine->lastError()));
        QVERIFY(!QFileInfo(dir.filePath(name)).isFile());
    }

    // The file that is there stays as it was.
    void fullDisk()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath("a.pdf");
        QVERIFY(m_engine->loadFromString(rowsTemplate()));
        m_engine->dataManager()->addModel("rows", rows(100), true);
        QVERIFY(m_engine->printToPDF(file));
        {
            const FileSizeLimit full(4096);
            m_engine->dataManager()->addModel("rows", rows(1), true);
            QVERIFY(!m_engine->printToPDF(file));
        }
        QVERIFY2(m_engine->lastError().contains("a.pdf"), qPrintable(m_engine->lastError()));
        QVERIFY(textOf(file).contains("Насос №100"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList("a.pdf"));
    }

    void noReport()
    {
        QVERIFY(!m_engine->loadFromFile("/nowhere/report.lrxml"));
        QVERIFY(m_engine->lastError().contains("/nowhere/report.lrxml"));
        QVERIFY(!m_engine->printToPDF("x.pdf"));
        QVERIFY(!m_engine->render());
    }

    void printer()
    {
        QTemporaryDir dir;
        QVERIFY(m_engine->loadFromString(rowsTemplate()));
        m_engine->dataManager()->addModel("rows", rows(100), true);
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(dir.filePath("printed.pdf"));
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
        QVERIFY2(m_engine->printReport(&printer), qPrintable(m_engine->lastError()));
        const QString text = textOf(dir.filePath("printed.pdf"));
        QVERIFY(!text.contains("Насос №40\n"));
        QVERIFY(text.contains("Насос №41\n") && text.contains("Насос №100\n"));
    }

    void noPrinter()
    {
        if (!QPrinterInfo::availablePrinterNames().isEmpty())
            QSKIP("There are printers");
        QVERIFY(m_engine->loadFromString(rowsTemplate()));
        QVERIFY(!m_engine->printReport());
        QVERIFY(m_engine->lastError().contains("принтер"));
        std::unique_ptr<PreviewReportWidget> preview(m_engine->createPreviewWidget());
        QTRY_VERIFY(!m_engine->isRendering());
        QSignalSpy put(preview.get(), &PreviewReportWidget::outputFinished);
        preview->print();
        QCOMPARE(put.count(), 1);
        QVERIFY(put.at(0).at(0).toString().contains("принтер"));
    }

    // Pages that found no room in memory come back from disk, and the view shows them.
    void pagesOnDisk()
    {
        const LaidOut made(report({page({band("Data", "data", 600, {item("$D{rows.n}")},
                                              text("datasource", "rows"))})}),
                           numbered(32));
        const auto pages = std::make_shared<PageStore>(made.pages.memoryUsed() / 2);
        for (int index = 0; index < made.pages.count(); ++index)
            QCOMPARE(pages->append(made.pages.page(index)), QString());
        QVERIFY(!pages->isOnDisk(0) && pages->isOnDisk(pages->count() - 1));
        QVERIFY(pages->memoryUsed() <= made.pages.memoryUsed() / 2);
        for (int index = 0; index < pages->count(); ++index)
            QCOMPARE(toBytes(pages->page(index)), toBytes(made.pages.page(index)));

        PageView view;
        view.resize(400, 500);
        view.show();
        view.setPages(made.report, pages);
        view.setScalePercent(100);
        view.goTo(pages->count() - 1);
        const auto blackPoints = [&view] {
            const QImage shown = view.viewport()->grab().toImage();
            int black = 0;
            for (int y = 0; y < shown.height(); ++y) {
                for (int x = 0; x < shown.width(); ++x)
                    black += qGray(shown.pixel(x, y)) < 60;
            }
            return black;
        };
        QTRY_VERIFY(blackPoints() > 20);
    }

    void cancelled()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath("long.pdf");
        // A script a row, so that it takes long enough to be cancelled.
        QVERIFY(m_engine->loadFromString(rowsTemplate("$S{\"$D{rows.name}\" + 1}")));
        m_engine->dataManager()->addModel("rows", rows(50000), true);
        connect(m_engine.get(), &ReportEngine::renderPageFinished, m_engine.get(),
                &ReportEngine::cancelRender);
        QSignalSpy ended(m_engine.get(), &ReportEngine::renderFinished);
        QVERIFY(!m_engine->printToPDF(file));
        QCOMPARE(ended.count(), 1);
        QVERIFY(!QFile::exists(file));
        QVERIFY(m_engine->pageCount() < 1250);
    }

    // Rich text shows no file of this machine.
    void picturesOfRichText()
    {
        QTemporaryDir dir;
        QImage red(100, 100, QImage::Format_RGB32);
        red.fill(Qt::red);
        QVERIFY(red.save(dir.filePath("red.png")));
        const QString content =
            QStringLiteral("<p>x<img src=\"%1\"></p>").arg(dir.filePath("red.png"));
        QVERIFY(m_engine->loadFromString(report(
            {page({band("Data", "d", 500, {item(content, 0, 0, 800, 400, flag("allowHTML"))})})})));
        const std::unique_ptr<PreviewReportWidget> preview(m_engine->createPreviewWidget());
        preview->resize(800, 600);
        preview->show();
        int black = 0;
        int reds = 0;
        const auto look = [&] {
            const QImage shown = preview->grab().toImage();
            for (int y = 0; y < shown.height(); ++y) {
                for (int x = 0; x < shown.width(); ++x) {
                    black += qGray(shown.pixel(x, y)) < 60;
                    reds += shown.pixelColor(x, y) == QColor(Qt::red);
                }
            }
            return black;
        };
        QTRY_VERIFY(look() > 20);
        QCOMPARE(reds, 0);
    }

    // What is not the whole report is not put out as if it were.
    void incomplete()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath("report.pdf");
        QVERIFY(
            m_engine->loadFromString(report({page({band("PageHeader", "h", 2900, {item("head")}),
                                                   band("Data", "d", 65, {item("x")})})})));
        QVERIFY(!m_engine->printToPDF(file));
        QVERIFY2(m_engine->lastError().contains("неполон"), qPrintable(m_engine->lastError()));

        QVERIFY(m_engine->loadFromString(rowsTemplate("$S{\"$D{rows.name}\" + 1}")));
        m_engine->dataManager()->addModel("rows", rows(50000), true);
        const std::unique_ptr<PreviewReportWidget> preview(m_engine->createPreviewWidget());
        const auto cancel = connect(m_engine.get(), &ReportEngine::renderPageFinished,
                                    m_engine.get(), &ReportEngine::cancelRender);
        QSignalSpy ended(m_engine.get(), &ReportEngine::renderFinished);
        QVERIFY(ended.wait());
        QVERIFY(preview->pageCount() > 0);
        QSignalSpy told(preview.get(), &PreviewReportWidget::outputFinished);
        preview->savePdf(file);
        QVERIFY(!told.isEmpty() || told.wait());
        QVERIFY(told[0][0].toString().contains("неполон"));
        QVERIFY(!QFile::exists(file));
        disconnect(cancel);
        m_engine->dataManager()->addModel("rows", rows(10), true);
        preview->refreshPages();
        QVERIFY(ended.wait());
        preview->savePdf(file);
        QVERIFY(told.wait());
        QCOMPARE(told[1][0].toString(), QString());
    }

    // Deleted in the middle of everything.
    void deleted()
    {
        QVERIFY(m_engine->loadFromString(rowsTemplate()));
        m_engine->dataManager()->addModel("rows", rows(20000), true);
        std::unique_ptr<PreviewReportWidget> preview(m_engine->createPreviewWidget());
        QSignalSpy pages(m_engine.get(), &ReportEngine::renderPageFinished);
        QVERIFY(pages.wait());
        m_engine.reset();
        QCOMPARE(preview->pageCount(), 0);
        preview->refreshPages();
        preview->print();
    }

    void startedAgain()
    {
        QVERIFY(m_engine->loadFromString(rowsTemplate()));
        m_engine->dataManager()->addModel("rows", rows(20000), true);
        QSignalSpy started(m_engine.get(), &ReportEngine::renderStarted);
        QSignalSpy finished(m_engine.get(), &ReportEngine::renderFinished);
        QSignalSpy pages(m_engine.get(), &ReportEngine::renderPageFinished);
        QVERIFY(m_engine->render());
        QVERIFY(pages.wait());
        m_engine->dataManager()->addModel("rows", rows(10), true);
        QVERIFY(m_engine->render());
        QVERIFY(finished.wait());
        QCOMPARE(m_engine->pageCount(), 1);
        QCOMPARE(started.count(), finished.count());
    }

    // What a rendering that was given up has posted arrives while the next one runs.
    void startedAgainAndAgain()
    {
        QVERIFY(m_engine->loadFromString(rowsTemplate(), "Сводка"));
        m_engine->dataManager()->addModel("rows", rows(400), true);
        for (int i = 0; i < 300; ++i) {
            m_engine->render();
            QCoreApplication::processEvents(QEventLoop::AllEvents, i % 7);
        }
        QTRY_VERIFY(!m_engine->isRendering());
        QCOMPARE(m_engine->pageCount(), 10);
    }

    void preview()
    {
        QTemporaryDir dir;
        QVERIFY(m_engine->loadFromString(rowsTemplate()));
        m_engine->dataManager()->addModel("rows", rows(200), true);
        std::unique_ptr<PreviewReportWidget> preview(m_engine->createPreviewWidget());
        QSignalSpy pageChanged(preview.get(), &PreviewReportWidget::pageChanged);
        QSignalSpy scaled(preview.get(), &PreviewReportWidget::scalePercentChanged);
        preview->fitPage(); // before there is anything to fit
        preview->resize(800, 600);
        preview->show();
        QTRY_COMPARE(preview->pageCount(), 5);
        QTRY_VERIFY(!m_engine->isRendering());
        const int small = preview->scalePercent();
        QVERIFY(small < 60 && !scaled.isEmpty());
        preview->fitWidth();
        QVERIFY(preview->scalePercent() > small);
        const int fitted = preview->scalePercent();
        preview->resize(1000, 600);
        QTRY_VERIFY(preview->scalePercent() > fitted);
        preview->setScalePercent(100000);
        QCOMPARE(preview->scalePercent(), 800);
        preview->setScalePercent(100);

        QCOMPARE(preview->currentPage(), 1);
        preview->priorPage();
        QCOMPARE(preview->currentPage(), 1);
        preview->nextPage();
        QCOMPARE(preview->currentPage(), 2);
        preview->lastPage();
        QCOMPARE(preview->currentPage(), 5);
        QTest::keyClick(preview->focusProxy(), Qt::Key_PageUp);
        QCOMPARE(preview->currentPage(), 4);
        QTest::keyClick(preview->focusProxy(), Qt::Key_Home);
        QCOMPARE(preview->currentPage(), 1);
        QCOMPARE(pageChanged.last().at(0).toInt(), 1);

        // What is saved is what is shown.
        QSignalSpy put(preview.get(), &PreviewReportWidget::outputFinished);
        preview->savePdf(dir.filePath("shown.pdf"));
        QVERIFY(put.wait());
        QCOMPARE(put.at(0).at(0).toString(), QString());
        QCOMPARE(textOf(dir.filePath("shown.pdf")).count(QChar('\f')), preview->pageCount());

        preview->setWindowTitle("Смена 1/2: ночь"); // what the host calls it
        preview->printToPDF();
        auto *question = preview->findChild<QFileDialog *>();
        QVERIFY(question);
        QCOMPARE(QFileInfo(question->selectedFiles().value(0)).fileName(),
                 QString("Смена 1_2_ ночь.pdf"));
        question->reject();
    }

    // Scrolled in steps the picture is that of painting all of it anew.
    void scrolledPicture()
    {
        QVERIFY(m_engine->loadFromString(rowsTemplate()));
        m_engine->dataManager()->addModel("rows", rows(200), true);
        std::unique_ptr<PreviewReportWidget> preview(m_engine->createPreviewWidget());
        preview->resize(500, 400);
        preview->show();
        QVERIFY(QTest::qWaitForWindowExposed(preview.get()));
        QTRY_VERIFY(preview->pageCount() == 5 && !m_engine->isRendering());
        preview->setScalePercent(73);
        auto *view = qobject_cast<QAbstractScrollArea *>(preview->focusProxy());
        QVERIFY(view);
        QImage shown(view->viewport()->size(), QImage::Format_RGB32);
        for (int step = 0; step < 12; ++step)
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() + 97);
        QCoreApplication::processEvents();
        view->viewport()->render(&shown);
        QImage pieces(shown.size(), QImage::Format_RGB32);
        for (int y = 0; y < pieces.height(); y += 50)
            view->viewport()->render(&pieces, QPoint(0, y), QRegion(0, y, pieces.width(), 50));
        QCOMPARE(pieces, shown);
    }

private:
    std::unique_ptr<ReportEngine> m_engine;
};

QTEST_MAIN(tst_report_engine)
#include "tst_report_engine.moc"
