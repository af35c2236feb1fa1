// The pages that list elements say what the table of kinds says.
#include "nodes/model/KindTable.h"
#include "nodes/visual/BasicWidget.h"

#include <QtTest>

#include <QFile>
#include <QRegularExpression>

#include <map>

using namespace Nodes;

namespace {

using Words = QSet<QString>;

Words quotedIn(const QString &text)
{
    Words words;
    static const QRegularExpression quoted("`([^`\n]*)`");
    for (auto it = quoted.globalMatch(text); it.hasNext();) {
        for (const QString &word : it.next().captured(1).remove('"').split('='))
            words.insert(word);
    }
    return words;
}

/// What stands about one kind: its section, and the words of it and of what is said of all.
struct Section
{
    QString own;
    Words words;
};

std::map<QString, Section> sections()
{
    std::map<QString, Section> found;
    Words common;
    for (const char *page :
         {"elements.md", "inputs.md", "charts.md", "alarm-health.md", "events.md", "reports.md"}) {
        QFile file(QStringLiteral(STATION_SOURCE_DIR "/docs/") + page);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("%s is not there", page);
        const QStringList parts = QString::fromUtf8(file.readAll()).split("\n## ");
        common |= quotedIn(parts.front());
        static const QRegularExpression title("^[^\n]*: `(\\w+)`\n");
        for (const QString &part : parts) {
            const QRegularExpressionMatch match = title.match(part);
            if (match.hasMatch())
                found[match.captured(1)] = {part, common | quotedIn(part)};
        }
    }
    static const QRegularExpression others("has\\s+the\\s+keys\\s+of\\s+`(\\w+)`",
                                           QRegularExpression::CaseInsensitiveOption);
    for (auto &[key, section] : found) {
        const QString other = others.match(section.own).captured(1);
        if (!other.isEmpty())
            section.words |= quotedIn(found[other].own);
    }
    return found;
}

/// Keys in the first column of the section's tables, and the defaults of those that stand alone.
std::map<QString, QString> tabled(const QString &section)
{
    std::map<QString, QString> keys;
    static const QRegularExpression row("^\\|([^|]*`[^|]*)\\|[^|]*\\|([^|]*)\\|$",
                                        QRegularExpression::MultilineOption);
    static const QRegularExpression value("=\"[^\"]*\"");
    for (auto it = row.globalMatch(section); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const Words quoted = quotedIn(match.captured(1).section(" of a ", 0, 0).remove(value));
        const bool isOfChild = match.captured(1).contains(" of a ");
        for (const QString &key : quoted)
            keys[key] = quoted.size() == 1 && !isOfChild ? match.captured(2).trimmed() : "";
    }
    return keys;
}

/// True unless the page names another plain value than that default.
bool agrees(QString told, const PropertyDescriptor &property)
{
    static const QRegularExpression plain("^(`[^`]*`|-?[0-9.]+|true|false)$");
    if (!plain.match(told).hasMatch())
        return true; // told in words
    const QString text = QString::fromStdString(property.defaultText);
    return told.remove('`') == text || (told.toDouble() == text.toDouble() && told[0].isDigit());
}

} // namespace

class TestKindDocs : public QObject
{
    Q_OBJECT

private slots:
    void elementsAreDescribed_data();
    void elementsAreDescribed();
};

void TestKindDocs::elementsAreDescribed_data()
{
    QTest::addColumn<QString>("kind");
    for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
        if (kind.type.GetFamily() == NodeType::TypeWidget)
            QTest::newRow(kind.key.c_str()) << QString::fromStdString(kind.key);
    }
}

void TestKindDocs::elementsAreDescribed()
{
    QFETCH(QString, kind);
    const KindTable &table = KindTable::Instance();
    const KindInfo &described = *table.FindByKey(kind.toStdString());
    const auto pages = sections();
    QVERIFY2(pages.count(kind), "no page has a section on it");
    const Section &section = pages.at(kind);
    const auto keys = tabled(section.own);

    Words known; // keys of the kind and of what may stand below it
    QStringList faults;
    const auto check = [&](const KindInfo &info, const Words &words) {
        for (const PropertyDescriptor &property : info.properties) {
            const QString key = QString::fromStdString(property.key);
            known.insert(key);
            if (!words.contains(key))
                faults << key + " is missing";
            for (const PropertyChoice &choice : property.choices) {
                if (keys.count(key) &&
                    !section.words.contains(QString::fromStdString(choice.token)))
                    faults << key + ": choice " + QString::fromStdString(choice.token);
            }
            if (&info == &described && keys.count(key) && !agrees(keys.at(key), property))
                faults << key + ": default " + QString::fromStdString(property.defaultText);
        }
    };
    check(described, section.words);
    Words everywhere; // a state is the same below each kind and described once
    for (const auto &[other, its] : pages)
        everywhere |= its.words;
    for (const KindInfo &child : table.GetKinds()) {
        if (described.AllowsChild(child.type) &&
            section.own.contains(QString::fromStdString(child.key)))
            check(child, everywhere);
    }
    for (const auto &[key, told] : keys) {
        if (!known.contains(key))
            faults << key + " is no key";
    }
    QCOMPARE(faults, QStringList());
}

QTEST_GUILESS_MAIN(TestKindDocs)
#include "tst_kind_docs.moc"
