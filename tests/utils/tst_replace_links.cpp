#include "utils/undo/ReplaceLinksCommand.h"

#include "nodes/ProjectFixture.h"
#include "nodes/visual/BasicWidget.h"

#include <QLoggingCategory>
#include <QUndoStack>
#include <QtTest>

using namespace Nodes;
using Utils::LinkReplacement;

namespace {

constexpr unsigned signalId = BasicWidget::Prop::Signal;
constexpr unsigned onPressId = BasicWidget::Prop::OnPress;

/// A label with a signal and a list of three.
struct Labels : ProjectFixture
{
    Labels()
    {
        for (const char *name : {"a", "b", "c", "d"})
            nodes.emplace_back(add("memorySignal", root(), name));
        label = add("label", addLayer());
        (void)label->SetProperty(signalId, nodes[0]);
        (void)label->SetProperty(onPressId, NodeLinks{nodes[0], nodes[1], nodes[2]});
    }
    QString state() const
    {
        const auto names = [this](const char *key) {
            QStringList found;
            const QString ids = QString::fromStdString(textOf(*label, key));
            for (const QString &id : ids.split(QRegExp("[^0-9]+"), Qt::SkipEmptyParts))
                found << QString::fromStdString(NodeLink(id.toULong()).GetLinkName());
            return found.join("");
        };
        return names("signal") + ":" + names("onPress");
    }

    NodeLinks nodes;
    ConfigNode *label;
    QUndoStack stack;
};

/// "ab": links to the first of the texts lead to the second, "a-": they go.
std::vector<LinkReplacement> replacements(const Labels &l, const QStringList &texts)
{
    const auto node = [&l](QChar name) {
        return name == '-' ? NodeLink() : l.nodes[std::size_t(name.unicode() - 'a')];
    };
    std::vector<LinkReplacement> made;
    for (const QString &text : texts) {
        made.push_back({l.label, signalId, node(text[0]), node(text[1])});
        made.push_back({l.label, onPressId, node(text[0]), node(text[1])});
    }
    return made;
}

} // namespace

class TestReplaceLinks : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules("station.undo=false"); }
    void replaces_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("state");
        QTest::newRow("by another") << QStringList{"ad"} << "d:dbc";
        QTest::newRow("in the middle") << QStringList{"bd"} << "a:adc";
        QTest::newRow("by one of the list") << QStringList{"ac"} << "c:cb";
        QTest::newRow("two by the same") << QStringList{"ad", "bd"} << "d:dc";
        QTest::newRow("two by each other") << QStringList{"ab", "ba"} << "b:bac";
        QTest::newRow("by nothing") << QStringList{"a-"} << ":bc";
        QTest::newRow("one that is not there") << QStringList{"da"} << "a:abc";
    }
    void replaces()
    {
        QFETCH(QStringList, texts);
        QFETCH(QString, state);
        Labels labels;
        labels.stack.push(new Utils::ReplaceLinksCommand(replacements(labels, texts)));
        QCOMPARE(labels.state(), state);
        // What changes nothing leaves no step.
        QCOMPARE(labels.stack.count(), state == "a:abc" ? 0 : 1);
        labels.stack.undo();
        QCOMPARE(labels.state(), QString("a:abc"));
        labels.stack.redo();
        QCOMPARE(labels.state(), state);
    }
    void replacesAllOrNothing()
    {
        Labels labels;
        auto links = replacements(labels, {"ad"});
        links.push_back({labels.label, 1, labels.nodes[0], labels.nodes[3]}); // no such property
        labels.stack.push(new Utils::ReplaceLinksCommand(links));
        QCOMPARE(labels.stack.count(), 0);
        QCOMPARE(labels.state(), QString("a:abc"));
    }
};

QTEST_MAIN(TestReplaceLinks)
#include "tst_replace_links.moc"
