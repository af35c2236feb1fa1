#pragma once

#include "widgets/reports/engine/preview/PageView.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QLabel;
class QPrinter;

namespace LimeReport {

class OutputThread;
class ReportDesk;

/// Inside of the preview: the view, a line that tells what is going on, and the output of the
/// pages that are shown. GUI thread.
class PreviewBody : public QWidget
{
    Q_OBJECT

public:
    PreviewBody(ReportDesk &desk, QWidget *parent);
    ~PreviewBody() override;

    PageView &view() { return *m_view; }
    void refresh();
    void askPrinter();
    void askFile();
    void save(const QString &file);

signals:
    /// "" after success, else why not, for operators.
    void outputFinished(const QString &error);

private:
    void onStarted();
    void onPages(int pages);
    void onFinished();
    void onDeskGone();
    void showPages(bool isFinal);
    void tell(const QString &text);
    bool canPutOut();
    void start(OutputThread *output, const QString &told);
    void onOutput();

    QPointer<ReportDesk> m_desk;
    PageView *m_view;
    QLabel *m_line;
    ReportTemplatePtr m_report;
    PageStorePtr m_pages;
    QString m_incomplete; // why the pages are not the whole report
    OutputThread *m_output = nullptr;
    std::unique_ptr<QPrinter> m_printer;
};

} // namespace LimeReport
