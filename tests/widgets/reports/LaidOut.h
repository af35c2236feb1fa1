#pragma once

#include "widgets/reports/TemplateText.h"
#include "widgets/reports/engine/layout/ReportLayout.h"
#include "widgets/reports/engine/template/TemplateReader.h"

#include <QVector>

#include <algorithm>

/// Rows in memory.
class TestRows : public LimeReport::SharedRows
{
public:
    TestRows(const QStringList &columns, const QVector<QVariantList> &rows)
        : m_columns(columns), m_rows(rows)
    {
    }
    QStringList columns() const override { return m_columns; }
    int rowCount() const override { return m_rows.size(); }
    QVariant value(int row, int column) const override { return m_rows[row].value(column); }

private:
    QStringList m_columns;
    QVector<QVariantList> m_rows;
};

/// A template laid out in the test's own thread.
class LaidOut
{
public:
    LaidOut(const QString &xml, const QMap<QString, LimeReport::DataSource> &sources = {})
    {
        report = LimeReport::TemplateReader::read(xml.toUtf8(), QStringLiteral("test"), QString(),
                                                  error);
        if (!report)
            return;
        LimeReport::DataSet data;
        data.sources = sources;
        LimeReport::ReportLayout layout(report, data);
        isWhole = layout.run(pages);
        problems = layout.problems();
        failure = layout.failure();
    }

    /// Texts of a page from top to bottom, those side by side from left to right, joined by blanks.
    QString texts(int page) const
    {
        QVector<LimeReport::PageItem> items = pages.page(page).items;
        std::stable_sort(items.begin(), items.end(), [](const auto &left, const auto &right) {
            return left.rect.y() != right.rect.y() ? left.rect.y() < right.rect.y()
                                                   : left.rect.x() < right.rect.x();
        });
        QStringList texts;
        for (const LimeReport::PageItem &item : items) {
            if (!item.text.isEmpty())
                texts.append(item.text);
        }
        return texts.join(QLatin1Char(' '));
    }

    /// Of all pages.
    QStringList texts() const
    {
        QStringList all;
        for (int page = 0; page < pages.count(); ++page)
            all.append(texts(page));
        return all;
    }

    LimeReport::ReportTemplatePtr report;
    LimeReport::PageStore pages;
    QString error, failure;
    QStringList problems;
    bool isWhole = false;
};

/// Source "rows" of so many rows: `n` is the number of the row, `group` changes every `run` rows.
inline QMap<QString, LimeReport::DataSource> numbered(int count, int run = 1000)
{
    QVector<QVariantList> rows;
    for (int row = 0; row < count; ++row)
        rows.append({row + 1, QStringLiteral("g%1").arg(row / run)});
    const QStringList columns{QStringLiteral("n"), QStringLiteral("group")};
    return {{QStringLiteral("rows"),
             LimeReport::DataSource(std::make_shared<TestRows>(columns, rows))}};
}
