#include "editor/reports/ReportTemplateWriter.h"

#include "editor/reports/ReportColumns.h"

#include "nodes/reports/BasicReport.h"
#include "nodes/reports/data/BasicReportSource.h"

#include <QRect>
#include <QXmlStreamWriter>

#include <algorithm>
#include <numeric>

namespace Editor {

namespace {

// 0.1 mm
const QSize upright(2100, 2970);
constexpr int leftMargin = 150;
constexpr int rightMargin = 100;
constexpr int lineHeight = 48;
constexpr int headHeight = 90; // titles of columns take two lines
constexpr int mostUpright = 7; // columns
constexpr int alignLeft = 129;
constexpr int alignRight = 130;
constexpr int alignCenter = 132;

struct Style
{
    int points = 8;
    bool isBold = false;
    int alignment = alignLeft;
    bool isTall = false; ///< grows with its text
    int borders = 0;
};

constexpr int allBorders = 15;

class Page
{
public:
    explicit Page(bool isWide)
        : m_size(isWide ? upright.transposed() : upright), m_isWide(isWide), m_xml(&m_text)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(2);
    }

    int width() const { return m_size.width() - leftMargin - rightMargin; }

    void begin()
    {
        m_xml.writeStartDocument();
        m_xml.writeStartElement(QStringLiteral("Report"));
        object("object", "LimeReport::ReportEnginePrivate");
        list("pages");
        object("item", "LimeReport::PageDesignIntf");
        object("pageItem", "PageItem");
        property("objectName", "QString", QStringLiteral("page1"));
        rectangle({{}, m_size});
        value("pageOrientation", "enumAndFlags", int(m_isWide));
        value("pageSize", "enumAndFlags", 0);
        value("leftMargin", "int", leftMargin / 10);
        value("topMargin", "int", 10);
        value("rightMargin", "int", rightMargin / 10);
        value("bottomMargin", "int", 10);
        list("children");
    }

    QString end()
    {
        for (int i = 0; i < 4; ++i) // children, pageItem, item, pages
            m_xml.writeEndElement();
        object("datasourcesManager", "LimeReport::DataSourceManager");
        m_xml.writeEndElement();
        object("scriptContext", "LimeReport::ScriptEngineContext");
        m_xml.writeEndDocument();
        return m_text;
    }

    void beginBand(const char *kind, const QString &name, int height, const QString &parent = {},
                   const QString &source = {})
    {
        object("item", kind);
        property("objectName", "QString", name);
        rectangle({0, 0, width(), height});
        value("bandIndex", "int", m_band++);
        if (!parent.isEmpty())
            property("parentBand", "QString", parent);
        if (!source.isEmpty()) {
            property("datasource", "QString", source);
            value("autoHeight", "bool", 1);
        }
        list("children");
    }

    void endBand()
    {
        m_xml.writeEndElement();
        m_xml.writeEndElement();
    }

    void text(const QRect &place, const QString &content, const Style &style)
    {
        object("item", "TextItem");
        property("objectName", "QString", QStringLiteral("text%1").arg(++m_texts));
        rectangle(place);
        property("content", "QString", content);
        value("alignment", "enumAndFlags", style.alignment);
        start("font", "QFont");
        m_xml.writeAttribute(QStringLiteral("family"), QStringLiteral("DejaVu Sans"));
        m_xml.writeAttribute(QStringLiteral("pointSize"), QString::number(style.points));
        m_xml.writeAttribute(QStringLiteral("weight"), QString::number(style.isBold ? 75 : 50));
        m_xml.writeAttribute(QStringLiteral("italic"), QStringLiteral("0"));
        m_xml.writeAttribute(QStringLiteral("underline"), QStringLiteral("0"));
        m_xml.writeEndElement();
        value("margin", "int", 6);
        value("backgroundMode", "enumAndFlags", 0);
        value("borders", "enumAndFlags", style.borders);
        value("autoHeight", "bool", int(style.isTall));
        m_xml.writeEndElement();
    }

private:
    void start(const char *name, const char *type)
    {
        m_xml.writeStartElement(QLatin1String(name));
        m_xml.writeAttribute(QStringLiteral("Type"), QLatin1String(type));
    }
    void object(const char *name, const char *className)
    {
        start(name, "Object");
        m_xml.writeAttribute(QStringLiteral("ClassName"), QLatin1String(className));
    }
    void list(const char *name) { start(name, "Collection"); }
    void property(const char *name, const char *type, const QString &text)
    {
        start(name, type);
        m_xml.writeCharacters(text);
        m_xml.writeEndElement();
    }
    void value(const char *name, const char *type, int number)
    {
        start(name, type);
        m_xml.writeAttribute(QStringLiteral("Value"), QString::number(number));
        m_xml.writeEndElement();
    }
    void rectangle(const QRect &place)
    {
        start("geometry", "QRect");
        m_xml.writeAttribute(QStringLiteral("x"), QString::number(place.x()));
        m_xml.writeAttribute(QStringLiteral("y"), QString::number(place.y()));
        m_xml.writeAttribute(QStringLiteral("width"), QString::number(place.width()));
        m_xml.writeAttribute(QStringLiteral("height"), QString::number(place.height()));
        m_xml.writeEndElement();
    }

    QSize m_size;
    bool m_isWide;
    QString m_text;
    QXmlStreamWriter m_xml;
    int m_band = 0;
    int m_texts = 0;
};

QVector<QRect> placesOf(const QVector<ReportColumn> &columns, int width, int height)
{
    const int all =
        std::accumulate(columns.begin(), columns.end(), 0,
                        [](int sum, const ReportColumn &column) { return sum + column.weight; });
    QVector<QRect> places;
    int weight = 0;
    for (const ReportColumn &column : columns) {
        const int left = width * weight / all;
        weight += column.weight;
        places.append({left, 0, width * weight / all - left, height});
    }
    return places;
}

QString cellOf(const QString &source, const ReportColumn &column)
{
    const QString field = QStringLiteral("$D{%1.%2}").arg(source, column.key);
    if (!column.isNumber)
        return field;
    const QString number =
        QStringLiteral("$S{numberFormat(%1,'f',%2,'ru_RU')}").arg(field).arg(column.decimals);
    return column.isMarked ? number + QStringLiteral("$D{%1.%2_mark}").arg(source, column.key)
                           : number;
}

void writeTable(Page &page, const Nodes::BasicReportSource &source)
{
    const QVector<ReportColumn> columns = reportColumns(source);
    if (columns.isEmpty())
        return;
    const QString name = QString::fromStdString(source.GetName());
    const QString band = name + QStringLiteral("Data");
    const QString title = QString::fromStdString(source.GetDescription());
    const int above = title.isEmpty() ? lineHeight / 2 : 2 * lineHeight;
    page.beginBand("DataHeader", name + QStringLiteral("Header"), above + headHeight, band);
    if (!title.isEmpty())
        page.text({0, above - lineHeight - 8, page.width(), lineHeight}, title, {10, true});
    const QVector<QRect> heads = placesOf(columns, page.width(), headHeight);
    for (int i = 0; i < columns.size(); ++i)
        page.text(heads[i].translated(0, above), columns[i].title,
                  {8, true, alignCenter, false, allBorders});
    page.endBand();
    page.beginBand("Data", band, lineHeight, {}, name);
    const QVector<QRect> cells = placesOf(columns, page.width(), lineHeight);
    for (int i = 0; i < columns.size(); ++i)
        page.text(cells[i], cellOf(name, columns[i]),
                  {8, false, columns[i].isNumber ? alignRight : alignLeft, true, allBorders});
    page.endBand();
}

} // namespace

QString ReportTemplateWriter::write(const Nodes::BasicReport &report)
{
    int widest = 0;
    for (const Nodes::BasicReportSource *source : report.GetSources())
        widest = std::max(widest, int(reportColumns(*source).size()));
    Page page(widest > mostUpright);
    page.begin();
    page.beginBand("PageHeader", QStringLiteral("PageHeader"), 190);
    page.text({0, 0, page.width() - 600, 70}, QStringLiteral("$V{report}"), {14, true});
    page.text({page.width() - 600, 0, 600, 50}, QStringLiteral("$V{station}"),
              {8, false, alignRight});
    page.text({page.width() - 600, 50, 600, 50}, QStringLiteral("$V{made}"),
              {8, false, alignRight});
    page.text({0, 76, page.width() - 600, 56}, QStringLiteral("$V{period}"), {10, true});
    page.text({0, 132, page.width(), 48}, QStringLiteral("$V{unfinished}"), {8});
    page.endBand();
    for (const Nodes::BasicReportSource *source : report.GetSources())
        writeTable(page, *source);
    page.beginBand("PageFooter", QStringLiteral("PageFooter"), 60);
    page.text({0, 10, page.width() - 600, 44}, QStringLiteral("$V{report} · $V{interval}"), {7});
    page.text({page.width() - 600, 10, 600, 44},
              QStringLiteral("Лист $V{#PAGE} из $V{#PAGE_COUNT}"), {7, false, alignRight});
    page.endBand();
    return page.end();
}

} // namespace Editor
