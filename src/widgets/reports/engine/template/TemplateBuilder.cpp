#include "widgets/reports/engine/template/TemplateBuilder.h"

#include "widgets/reports/engine/template/KnownProperties.h"
#include "widgets/reports/engine/template/TemplateXml.h"

#include <utility>

namespace LimeReport {

namespace {

const QSizeF A4(2100, 2970);
constexpr int CustomSize = 30; // of `pageSize`: as the geometry says, whatever the orientation
// 0.1 mm: the longest rolls that plotters take are some metres.
constexpr double SmallestPage = 100, LargestPage = 50000;

// Where the name of an object may stand.
QString nameOf(const QVariantMap &object)
{
    return object.value(QStringLiteral("objectName")).toString();
}

} // namespace

TemplateBuilder::TemplateBuilder(ReportTemplate &made) : m_made(made) {}

bool TemplateBuilder::build(const QVariantMap &root)
{
    m_made.dataSources = root.value(QStringLiteral("datasourcesManager")).toMap();
    m_made.scriptContext = root.value(QStringLiteral("scriptContext")).toMap();
    const QVariantList pages = root.value(QStringLiteral("pages")).toList();
    for (const QVariant &one : pages) {
        const QVariantMap page = one.toMap();
        if (page.contains(QStringLiteral("pageItem")) &&
            !this->page(page.value(QStringLiteral("pageItem")).toMap()))
            return false;
    }
    if (m_made.pages.empty())
        m_error = QStringLiteral("в шаблоне нет страниц: в <pages> ни одной с <pageItem>");
    return !m_made.pages.empty();
}

TemplateItem TemplateBuilder::item(const QVariantMap &object)
{
    TemplateItem made;
    made.number = m_made.itemCount++;
    made.className = object.value(TemplateXml::ClassName()).toString();
    made.name = nameOf(object);
    made.geometry = object.value(QStringLiteral("geometry")).toRectF();
    made.properties = object;
    for (const char *taken : {"ClassName", "objectName", "geometry", "children"})
        made.properties.remove(QLatin1String(taken));
    report(made);
    const QVariantList children = object.value(QStringLiteral("children")).toList();
    made.children.reserve(std::size_t(children.size()));
    for (const QVariant &child : children)
        made.children.push_back(item(child.toMap()));
    return made;
}

// Each property of a class once, however many items have it.
void TemplateBuilder::report(const TemplateItem &item)
{
    for (const QString &property : unknownProperties(item)) {
        const QString key = item.className + QLatin1Char('.') + property;
        if (m_reported.contains(key))
            continue;
        m_reported.insert(key);
        m_made.problems.append(QStringLiteral("%1 «%2»: неизвестное свойство %3 не действует")
                                   .arg(item.className, item.name, property));
    }
}

bool TemplateBuilder::page(const QVariantMap &object)
{
    TemplatePage page;
    page.item = item(object);
    if (!measure(page))
        return false;
    m_made.pages.push_back(std::move(page));
    return true;
}

bool TemplateBuilder::measure(TemplatePage &page)
{
    QSizeF size = page.item.geometry.size();
    if (size.isEmpty())
        size = A4;
    const bool isLandscape = page.item.integer(QStringLiteral("pageOrientation")) == 1;
    const bool isTold = page.item.has(QStringLiteral("pageOrientation")) &&
                        page.item.integer(QStringLiteral("pageSize")) != CustomSize;
    if (isTold && isLandscape != (size.width() > size.height()))
        size.transpose();
    for (double side : {size.width(), size.height()}) {
        if (side < SmallestPage || side > LargestPage) {
            m_error =
                QStringLiteral("страница «%1» — %2 × %3 мм; печатаются стороны от %4 до %5 мм")
                    .arg(page.item.name)
                    .arg(size.width() / 10)
                    .arg(size.height() / 10)
                    .arg(SmallestPage / 10)
                    .arg(LargestPage / 10);
            return false;
        }
    }
    page.size = size;
    const auto margin = [&](const char *key) {
        return 10 * qBound(0.0, page.item.real(QLatin1String(key), 5), LargestPage);
    };
    page.margins = QMarginsF(margin("leftMargin"), margin("topMargin"), margin("rightMargin"),
                             margin("bottomMargin"));
    if (page.printed().width() < SmallestPage || page.printed().height() < SmallestPage) {
        m_error =
            QStringLiteral("страница «%1»: поля не оставляют места для печати").arg(page.item.name);
        return false;
    }
    return true;
}

} // namespace LimeReport
