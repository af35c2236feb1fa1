#include "widgets/reports/engine/preview/PreviewBody.h"

#include "widgets/reports/engine/output/OutputThread.h"
#include "widgets/reports/engine/running/ReportDesk.h"

#include <QFileDialog>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QVBoxLayout>

namespace LimeReport {

namespace {

// A preview that is embedded in a scene has no window of the desktop of its own, and a dialog that
// belonged to it would be embedded too.
QWidget *desktopWindowOf(const QWidget &widget)
{
    QWidget *window = widget.window();
    const QGraphicsProxyWidget *proxy = window->graphicsProxyWidget();
    if (!proxy || !proxy->scene() || proxy->scene()->views().isEmpty())
        return window;
    return desktopWindowOf(*proxy->scene()->views().first());
}

void speakRussian(QFileDialog &dialog)
{
    const std::pair<QFileDialog::DialogLabel, const char *> labels[] = {
        {QFileDialog::LookIn, "Папка:"},
        {QFileDialog::FileName, "Имя файла:"},
        {QFileDialog::FileType, "Вид файла:"},
        {QFileDialog::Accept, "Сохранить"},
        {QFileDialog::Reject, "Отмена"}};
    for (const auto &[label, text] : labels)
        dialog.setLabelText(label, QString::fromUtf8(text));
}

} // namespace

PreviewBody::PreviewBody(ReportDesk &desk, QWidget *parent)
    : QWidget(parent), m_desk(&desk), m_view(new PageView(this)), m_line(new QLabel(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_line);
    m_line->setContentsMargins(8, 8, 8, 8);
    m_line->setTextFormat(Qt::PlainText);
    m_line->setWordWrap(true);
    m_line->hide();
    connect(&desk.runner, &ReportRunner::started, this, &PreviewBody::onStarted);
    connect(&desk.runner, &ReportRunner::progressed, this, &PreviewBody::onPages);
    connect(&desk, &ReportDesk::rendered, this, &PreviewBody::onFinished);
    connect(&desk, &QObject::destroyed, this, &PreviewBody::onDeskGone);
}

PreviewBody::~PreviewBody()
{
    delete m_output;
}

void PreviewBody::tell(const QString &text)
{
    m_line->setText(text);
    m_line->setVisible(!text.isEmpty());
}

void PreviewBody::refresh()
{
    if (m_desk)
        m_desk->render();
}

// What was shown is of other data, and nobody is to take it for the new.
void PreviewBody::onStarted()
{
    m_pages.reset();
    m_view->setPages(nullptr, nullptr);
    tell(QStringLiteral("Формирование отчёта…"));
}

void PreviewBody::onPages(int pages)
{
    showPages(false);
    tell(QStringLiteral("Формирование отчёта: страниц %1…").arg(pages));
}

void PreviewBody::showPages(bool isFinal)
{
    const PageStorePtr pages = m_desk->runner.pages();
    if (pages == m_pages) {
        m_view->updatePages(isFinal);
        return;
    }
    m_report = m_desk->runner.report();
    m_pages = pages;
    m_view->setPages(m_report, m_pages);
}

void PreviewBody::onFinished()
{
    showPages(true);
    const QString why = m_desk->runner.isCancelled() ? QStringLiteral("формирование отменено.")
                                                     : m_desk->runner.failure();
    m_incomplete = why.isEmpty() ? QString() : QStringLiteral("Отчёт неполон: %1").arg(why);
    tell(m_incomplete);
}

void PreviewBody::onDeskGone()
{
    m_pages.reset();
    m_view->setPages(nullptr, nullptr);
    tell(QString());
}

bool PreviewBody::canPutOut()
{
    QString error;
    if (m_output)
        error = QStringLiteral("Отчёт уже печатается или сохраняется.");
    else if (!m_pages || m_pages->count() == 0)
        error = QStringLiteral("Отчёт не сформирован.");
    else if (m_desk && m_desk->runner.isRunning())
        error = QStringLiteral("Отчёт ещё формируется.");
    else if (!m_incomplete.isEmpty())
        error = m_incomplete; // half a report on paper looks like a whole one
    if (!error.isEmpty())
        emit outputFinished(error);
    return error.isEmpty();
}

void PreviewBody::askPrinter()
{
    if (!canPutOut())
        return;
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        const QString error =
            QStringLiteral("Не напечатано: на этой станции нет ни одного принтера.");
        tell(error);
        emit outputFinished(error);
        return;
    }
    m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    auto *dialog = new QPrintDialog(m_printer.get(), desktopWindowOf(*this));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setMinMax(1, m_pages->count());
    dialog->setOption(QAbstractPrintDialog::PrintToFile, false);
    connect(dialog, &QDialog::accepted, this, [this] {
        if (!canPutOut())
            return;
        auto *output = new OutputThread(m_report, m_pages, nullptr);
        output->toPrinter(m_printer.get());
        start(output, QStringLiteral("Печать отчёта"));
    });
    dialog->open();
}

void PreviewBody::askFile()
{
    if (!canPutOut())
        return;
    auto *dialog =
        new QFileDialog(desktopWindowOf(*this), QStringLiteral("Сохранение отчёта в PDF"),
                        QString(), QStringLiteral("PDF (*.pdf)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("pdf"));
    speakRussian(*dialog);
    QString name = parentWidget()->windowTitle(); // what hosts call the report
    if (name.isEmpty())
        name = m_report->name;
    for (const QChar forbidden : QStringLiteral("/\\:*?\"<>|"))
        name.replace(forbidden, '_');
    dialog->selectFile(name + QStringLiteral(".pdf"));
    connect(dialog, &QFileDialog::fileSelected, this, &PreviewBody::save);
    dialog->open();
}

void PreviewBody::save(const QString &file)
{
    if (!canPutOut())
        return;
    auto *output = new OutputThread(m_report, m_pages, nullptr);
    output->toFile(file);
    start(output, QStringLiteral("Сохранение отчёта"));
}

void PreviewBody::start(OutputThread *output, const QString &told)
{
    m_output = output;
    tell(told + QStringLiteral("…"));
    connect(output, &OutputThread::progressed, this, [this, told](int pages, int count) {
        tell(QStringLiteral("%1: страница %2 из %3").arg(told).arg(pages).arg(count));
    });
    connect(output, &QThread::finished, this, &PreviewBody::onOutput);
    output->start();
}

void PreviewBody::onOutput()
{
    const QString error = m_output->error();
    m_output->deleteLater();
    m_output = nullptr;
    tell(error);
    emit outputFinished(error);
}

} // namespace LimeReport
