#include "widgets/charts/export/ChartExport.h"

#include "widgets/charts/export/ChartPage.h"
#include "widgets/charts/export/CsvExport.h"
#include "widgets/charts/export/ExportProgress.h"
#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/time/ChartTime.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/dialogs/SaveFileQuestion.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/signals/BasicSignal.h"

#include <QDir>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

constexpr double dotsPerInch = 96;
constexpr int pngScale = 2;
constexpr int pdfResolution = 300;
constexpr double metresPerInch = 0.0254;

} // namespace

ChartExport::ChartExport(Plot *plot, Legend *legend, QWidget *element)
    : m_plot(plot), m_legend(legend), m_element(element)
{
}

ChartExport::~ChartExport()
{
    delete m_progress;
}

bool ChartExport::isBusy() const
{
    return m_csv;
}

void ChartExport::fill(QMenu &menu)
{
    QAction *csv = menu.addAction(QStringLiteral("Сохранить данные (CSV)…"));
    csv->setEnabled(!isBusy());
    connect(csv, &QAction::triggered, this, [this] {
        const QString file = askName(QStringLiteral("Сохранить данные"), QStringLiteral("csv"),
                                     QStringLiteral("Таблица CSV (*.csv)"));
        if (!file.isEmpty())
            saveCsv(file);
    });
    const auto addPicture = [&](const QString &text, const QString &ending, const QString &filter,
                                QString (ChartExport::*save)(const QString &) const) {
        connect(menu.addAction(text), &QAction::triggered, this, [=] {
            const QString file = askName(text, ending, filter);
            if (!file.isEmpty())
                tell(file, (this->*save)(file));
        });
    };
    addPicture(QStringLiteral("Сохранить картинку (PNG)…"), QStringLiteral("png"),
               QStringLiteral("Картинка PNG (*.png)"), &ChartExport::savePng);
    addPicture(QStringLiteral("Сохранить документ (PDF)…"), QStringLiteral("pdf"),
               QStringLiteral("Документ PDF (*.pdf)"), &ChartExport::savePdf);
}

QString ChartExport::title() const
{
    const Nodes::widgetChart *chart = m_plot->chart();
    const Nodes::widgetChartGroup *group = m_plot->group();
    QString text = chart ? QString::fromStdString(chart->GetName()) : QStringLiteral("График");
    if (group && chart && chart->GetGroups().size() > 1)
        text += QStringLiteral(" — ") + QString::fromStdString(group->GetName());
    return text;
}

QString ChartExport::intervalText() const
{
    const QwtInterval window = m_plot->window();
    const QString format = QStringLiteral("dd.MM.yyyy hh:mm:ss");
    return QStringLiteral("%1 – %2").arg(ChartTime::text(window.minValue(), format),
                                         ChartTime::text(window.maxValue(), format));
}

QString ChartExport::proposedName(const QString &ending) const
{
    const QwtInterval window = m_plot->window();
    const QString format = QStringLiteral("yyyy-MM-dd hh-mm");
    QString name = QStringLiteral("%1 %2 – %3")
                       .arg(title(), ChartTime::text(window.minValue(), format),
                            ChartTime::text(window.maxValue(), format));
    for (const QChar forbidden : QStringLiteral("/\\:*?\"<>|"))
        name.replace(forbidden, '_');
    return name + '.' + ending;
}

QString ChartExport::askName(const QString &caption, const QString &ending,
                             const QString &filter) const
{
    return SaveFileQuestion{caption, proposedName(ending), ending, filter}.ask(
        TouchMenu::windowOf(m_element));
}

QString ChartExport::savePng(const QString &file) const
{
    const ChartPage page(*m_plot, m_legend, title(), intervalText());
    const int width = qMax(800, m_plot->width());
    QImage picture(QSize(width, page.heightFor(width)) * pngScale, QImage::Format_RGB32);
    const int dots = qRound(dotsPerInch * pngScale / metresPerInch);
    picture.setDotsPerMeterX(dots);
    picture.setDotsPerMeterY(dots);
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        page.paint(painter, picture.rect());
    }
    QSaveFile output(file);
    const bool isWritten = output.open(QIODevice::WriteOnly) && picture.save(&output, "PNG") &&
                           output.flush() && output.commit();
    return isWritten ? QString() : SaveFileQuestion::failure(file, output.errorString());
}

QString ChartExport::savePdf(const QString &file) const
{
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly))
        return SaveFileQuestion::failure(file, output.errorString());
    {
        QPdfWriter writer(&output);
        writer.setResolution(pdfResolution);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageOrientation(QPageLayout::Landscape);
        writer.setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
        writer.setTitle(title());
        QPainter painter(&writer);
        painter.setRenderHint(QPainter::Antialiasing);
        ChartPage(*m_plot, m_legend, title(), intervalText())
            .paint(painter, QRectF(0, 0, writer.width(), writer.height()));
    }
    return output.flush() && output.commit()
               ? QString()
               : SaveFileQuestion::failure(file, output.errorString());
}

// All signals of the series, also those of the other axis or of a tube; each once.
void ChartExport::addSources(const Nodes::widgetChartBasicSerie &serie, CsvExport::Request &request)
{
    Nodes::NodeLinks archived;
    serie.CollectArchived(archived);
    for (const Nodes::NodeLink &link : archived) {
        const auto *signal = dynamic_cast<const Nodes::BasicSignal *>(link.GetNode());
        if (!signal || std::count(request.sources.begin(), request.sources.end(), link) > 0)
            continue;
        const std::string name = signal == serie.GetSignal() ? serie.GetText() : signal->GetName();
        request.sources.push_back(link);
        request.texts.push_back(
            {QString::fromStdString(name), QString::fromStdString(signal->GetUnit())});
    }
}

void ChartExport::saveCsv(const QString &file)
{
    if (isBusy())
        return;
    CsvExport::Request request;
    request.file = file;
    const QwtInterval window = m_plot->window();
    request.from = Nodes::Timestamp(ChartTime::toUtc(window.minValue())) * 1000;
    request.to = Nodes::Timestamp(ChartTime::toUtc(window.maxValue())) * 1000;
    const QList<ISerie *> series = m_plot->series();
    for (const ISerie *serie : series) {
        const Nodes::widgetChartBasicSerie *node = serie->getNode();
        if (node && !node->IsForbidden())
            addSources(*node, request);
    }
    if (request.sources.empty()) {
        const QString error =
            QStringLiteral("Сохранять нечего: ни один сигнал графика не архивируется.");
        tell(file, error);
        emit finished(error);
        return;
    }
    m_csv = new CsvExport(m_plot->context().model(), request, this);
    DialogRequest dialog;
    dialog.parent = TouchMenu::windowOf(m_element);
    m_progress = Dialogs::make<ExportProgress>(dialog);
    m_progress->setText(QStringLiteral("Данные графика «%1» сохраняются в файл %2")
                            .arg(title(), QDir::toNativeSeparators(file)));
    connect(m_csv, &CsvExport::progressed, m_progress, &ExportProgress::setPercent);
    connect(m_progress, &ExportProgress::cancelled, m_csv, &CsvExport::cancel);
    connect(m_csv, &CsvExport::finished, this,
            [this, file](const QString &error) { onCsvFinished(file, error); });
    m_progress->show();
    m_csv->start();
}

void ChartExport::onCsvFinished(const QString &file, const QString &error)
{
    if (m_csv)
        m_csv->deleteLater();
    m_csv.clear();
    const bool isCancelled = m_progress && !m_progress->isVisible();
    delete m_progress;
    if (!isCancelled)
        tell(file, error);
    emit finished(error);
}

void ChartExport::tell(const QString &file, const QString &error) const
{
    QWidget *window = TouchMenu::windowOf(m_element);
    if (error.isEmpty())
        PlainMessageBox::tell(QMessageBox::Information, QStringLiteral("Сохранение"),
                              QStringLiteral("Сохранено: ") + QDir::toNativeSeparators(file),
                              window);
    else
        PlainMessageBox::tell(QMessageBox::Warning, QStringLiteral("Ошибка"), error, window);
}

} // namespace Widgets
