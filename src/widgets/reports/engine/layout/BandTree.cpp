#include "widgets/reports/engine/layout/BandTree.h"

#include <QSet>

#include <algorithm>

namespace LimeReport {

namespace {

constexpr int DeepestDetail = 16;

const QString Parent = QStringLiteral("parentBand");

int indexOf(const TemplateItem *band)
{
    return band->integer(QStringLiteral("bandIndex"));
}

// Takes the bands of one page apart.
class Sorter
{
public:
    Sorter(const TemplatePage &page, QStringList &problems) : m_problems(problems)
    {
        for (const TemplateItem &item : page.item.children)
            m_bands.push_back(&item);
        std::stable_sort(m_bands.begin(), m_bands.end(),
                         [](auto *left, auto *right) { return indexOf(left) < indexOf(right); });
    }

    BandTree sort()
    {
        BandTree tree;
        tree.pageHeaders = all("PageHeader");
        tree.pageFooters = all("PageFooter");
        tree.reportHeaders = all("ReportHeader");
        tree.reportFooters = all("ReportFooter");
        tree.tearOffs = all("TearOffBand");
        for (const TemplateItem *band : all("Data"))
            tree.data.push_back(data(band, 0));
        adopt(tree);
        for (const TemplateItem *item : m_bands) {
            if (!m_taken.contains(item))
                loose(item, tree);
        }
        return tree;
    }

private:
    Bands all(const char *className)
    {
        Bands found;
        for (const TemplateItem *band : m_bands) {
            if (plainClass(*band) == QLatin1String(className))
                found.push_back(take(band));
        }
        return found;
    }

    const TemplateItem *take(const TemplateItem *band)
    {
        m_taken.insert(band);
        return band;
    }

    Bands children(const TemplateItem *parent, const char *className)
    {
        Bands found;
        for (const TemplateItem *band : m_bands) {
            if (!m_taken.contains(band) && !parent->name.isEmpty() &&
                band->text(Parent) == parent->name && plainClass(*band) == QLatin1String(className))
                found.push_back(take(band));
        }
        return found;
    }

    DataBands data(const TemplateItem *band, int depth)
    {
        const bool isDetail = plainClass(*band) == QLatin1String("SubDetail");
        DataBands made;
        made.band = band;
        made.headers = children(band, isDetail ? "SubDetailHeader" : "DataHeader");
        made.footers = children(band, isDetail ? "SubDetailFooter" : "DataFooter");
        groups(band, made.groups, 0);
        if (depth < DeepestDetail) {
            for (const TemplateItem *detail : children(band, "SubDetail"))
                made.details.push_back(data(detail, depth + 1));
        }
        return made;
    }

    // A group inside another one may name either the other's header or the data band as parent.
    void groups(const TemplateItem *parent, std::vector<GroupBands> &made, int depth)
    {
        for (const TemplateItem *header : children(parent, "GroupHeader")) {
            made.push_back({header, children(header, "GroupFooter")});
            if (depth < DeepestDetail)
                groups(header, made, depth + 1);
        }
    }

    // Headers and footers that name no band belong to the only one there is.
    void adopt(BandTree &tree)
    {
        if (tree.data.size() != 1)
            return;
        DataBands &data = tree.data.front();
        for (const TemplateItem *band : m_bands) {
            if (m_taken.contains(band) || !band->text(Parent).isEmpty())
                continue;
            const QString kind = plainClass(*band);
            if (kind == QLatin1String("DataHeader"))
                data.headers.push_back(take(band));
            else if (kind == QLatin1String("DataFooter"))
                data.footers.push_back(take(band));
            else if (kind == QLatin1String("GroupHeader"))
                data.groups.push_back({take(band), children(band, "GroupFooter")});
            else if (kind == QLatin1String("SubDetail"))
                data.details.push_back(this->data(take(band), 1));
        }
    }

    void loose(const TemplateItem *item, BandTree &tree)
    {
        static const QSet<QString> dependent{
            QStringLiteral("DataHeader"),      QStringLiteral("DataFooter"),
            QStringLiteral("GroupHeader"),     QStringLiteral("GroupFooter"),
            QStringLiteral("SubDetail"),       QStringLiteral("SubDetailHeader"),
            QStringLiteral("SubDetailFooter"),
        };
        if (!dependent.contains(plainClass(*item))) {
            tree.loose.push_back(item);
            return;
        }
        m_problems.append(
            QStringLiteral("%1 «%2» не печатается: его parentBand «%3» — не полоса этой страницы, "
                           "у которой могут быть подчинённые")
                .arg(plainClass(*item), item->name, item->text(Parent)));
    }

    QStringList &m_problems;
    Bands m_bands;
    QSet<const TemplateItem *> m_taken;
};

} // namespace

QString plainClass(const TemplateItem &item)
{
    const int colon = item.className.lastIndexOf(QLatin1Char(':'));
    return item.className.mid(colon + 1);
}

BandTree BandTree::of(const TemplatePage &page, QStringList &problems)
{
    return Sorter(page, problems).sort();
}

} // namespace LimeReport
