#include "widgets/reports/engine/output/PageOutput.h"

#include "widgets/reports/engine/pages/PagePainter.h"
#include "widgets/reports/engine/text/Reference.h"

#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

namespace LimeReport {

namespace {

QPageLayout layoutOf(const QSizeF &size)
{
    const bool isWide = size.width() > size.height();
    const QSizeF upright = (isWide ? size.transposed() : size) / 10;
    const QPageSize sheet(upright, QPageSize::Millimeter, QString(), QPageSize::FuzzyMatch);
    return QPageLayout(sheet, isWide ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
}

QString failure(const QString &file, const QString &reason)
{
    return QStringLiteral("Файл %1 не сохранён: %2").arg(QDir::toNativeSeparators(file), reason);
}

} // namespace

PageOutput::PageOutput(ReportTemplatePtr report, PageStorePtr pages)
    : m_report(std::move(report)), m_pages(std::move(pages))
{
}

template <class Device>
QString PageOutput::paint(Device &device, int first, int last, const std::atomic<bool> &isCancelled)
{
    device.setPageLayout(layoutOf(m_pages->size(first)));
    QPainter painter;
    if (!painter.begin(&device))
        return QStringLiteral("устройство не принимает вывод");
    PagePainter pages(m_report);
    const double scale = double(device.resolution()) / Reference::DotsPerInch;
    painter.setRenderHint(QPainter::Antialiasing);
    for (int index = first; index <= last; ++index) {
        if (isCancelled)
            return cancelled();
        const PrintedPage page = m_pages->page(index);
        if (page.isNull())
            return QStringLiteral("страница %1 не читается").arg(index + 1);
        if (index > first) {
            device.setPageLayout(layoutOf(page.size));
            if (!device.newPage())
                return QStringLiteral("страница %1 не принята").arg(index + 1);
        }
        painter.save();
        painter.scale(scale, scale);
        pages.paint(painter, page, QRectF(QPointF(), page.size));
        painter.restore();
        if (m_onPage)
            m_onPage(index + 1);
    }
    return painter.end() ? QString() : QStringLiteral("вывод не завершён");
}

QString PageOutput::savePdf(const QString &file, const std::atomic<bool> &isCancelled)
{
    if (m_pages->count() == 0)
        return failure(file, QStringLiteral("в отчёте нет страниц"));
    // What is put in place of a device or a pipe would take it away from the system.
    const QFileInfo before(file);
    if (before.exists() && !before.isFile())
        return failure(file, QStringLiteral("под этим именем уже есть то, что не является файлом"));
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly))
        return failure(file, output.errorString());
    QString error;
    {
        QPdfWriter writer(&output);
        writer.setResolution(Reference::DotsPerInch);
        writer.setTitle(m_report->name);
        writer.setCreator(QStringLiteral("Operator station"));
        error = paint(writer, 0, m_pages->count() - 1, isCancelled);
    }
    if (!error.isEmpty()) {
        output.cancelWriting();
        return error == cancelled() ? error : failure(file, error);
    }
    // commit() does not tell that its last bytes found no room; flush() does.
    const bool isSaved = output.flush() && output.commit();
    return isSaved ? QString() : failure(file, output.errorString());
}

QString PageOutput::print(QPrinter &printer, const std::atomic<bool> &isCancelled)
{
    if (!printer.isValid())
        return QStringLiteral("Не напечатано: принтер «%1» недоступен.").arg(printer.printerName());
    const int count = m_pages->count();
    const bool isRange = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const int first = isRange ? qMin(printer.fromPage(), count) - 1 : 0;
    const int last = isRange ? qBound(first, printer.toPage() - 1, count - 1) : count - 1;
    if (count == 0)
        return QStringLiteral("Не напечатано: в отчёте нет страниц.");
    printer.setFullPage(true);
    printer.setDocName(m_report->name);
    const QString error = paint(printer, first, last, isCancelled);
    if (!error.isEmpty())
        printer.abort();
    return error.isEmpty() || error == cancelled()
               ? error
               : QStringLiteral("Не напечатано на принтере «%1»: %2")
                     .arg(printer.printerName(), error);
}

} // namespace LimeReport
