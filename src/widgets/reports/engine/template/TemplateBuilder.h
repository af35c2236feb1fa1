#pragma once

#include "widgets/reports/engine/template/ReportTemplate.h"

#include <QSet>

namespace LimeReport {

/// Makes the pages of a template from the objects of its file.
class TemplateBuilder
{
public:
    explicit TemplateBuilder(ReportTemplate &made);

    /// False with error() when there is nothing to print from.
    bool build(const QVariantMap &root);
    const QString &error() const { return m_error; }

private:
    TemplateItem item(const QVariantMap &object);
    void report(const TemplateItem &item);
    bool page(const QVariantMap &object);
    bool measure(TemplatePage &page);

    ReportTemplate &m_made;
    QString m_error;
    QSet<QString> m_reported;
};

} // namespace LimeReport
