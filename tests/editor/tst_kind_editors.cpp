#include "PropertyFixture.h"

#include "editor/properties/PropertyGroups.h"
#include "editor/properties/PropertyTexts.h"
#include "editor/properties/values/ValueEditor.h"
#include "editor/properties/values/ValueEditors.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NumberText.h"

#include <QRegularExpression>
#include <QTime>
#include <QtTest>

using Nodes::KindInfo;
using Nodes::PropertyDescriptor;
using Nodes::PropertyType;

namespace {

bool isText(const PropertyDescriptor &d)
{
    return d.binding.type == PropertyType::String;
}

bool isWhole(const PropertyDescriptor &d)
{
    return d.choices.empty() &&
           (d.binding.type == PropertyType::Int || d.binding.type == PropertyType::UInt);
}

bool isLink(const PropertyDescriptor &d)
{
    return d.binding.type == PropertyType::Link || d.binding.type == PropertyType::Links;
}

/// What the text of a value of another type looks like.
bool looksTyped(const QString &text)
{
    return Nodes::ParseDouble(text.toStdString()) || text == "true" || text == "false" ||
           QRegularExpression("^#[0-9a-f]{6}([0-9a-f]{2})?$").match(text).hasMatch() ||
           QTime::fromString(text, "HH:mm:ss").isValid();
}

/// What is wrong with a property of a kind; "" when nothing is.
using Rule = QString (*)(const KindInfo &kind, const PropertyDescriptor &d);

QString named(const KindInfo &kind, const PropertyDescriptor &d)
{
    const QString name = QString::fromStdString(d.nameRu);
    const bool isRussian = name.contains(QRegularExpression("[А-Яа-я]")) || name.size() == 1;
    const auto alike = std::count_if(
        kind.properties.begin(), kind.properties.end(), [&](const PropertyDescriptor &other) {
            return other.nameRu == d.nameRu &&
                   &Editor::groupOf(kind, other) == &Editor::groupOf(kind, d);
        });
    if (!isRussian || d.nameEn.empty())
        return "no Russian or English name";
    return alike > 1 ? "another property of the group has its name" : "";
}

QString bounded(const KindInfo &, const PropertyDescriptor &d)
{
    if (isWhole(d) && !d.hasRange)
        return "a whole number without a range";
    return d.hasRange && d.minimum >= d.maximum ? "an empty range" : "";
}

QString led(const KindInfo &, const PropertyDescriptor &d)
{
    return isLink(d) && d.linkFamilies.empty() != (d.editorHint == "any")
               ? "a link has families, or the hint that it may lead anywhere"
               : "";
}

QString edited(const KindInfo &, const PropertyDescriptor &d)
{
    if (!isText(d) || Editor::hasOwnEditor(d) || d.editorHint == "readonly")
        return {};
    if (!d.editorHint.empty())
        return "no editor for the hint";
    return looksTyped(QString::fromStdString(d.defaultText)) ? "a typed value as a line of text"
                                                             : "";
}

// A fresh element must not be taken for one that shows something.
QString defaulted(const KindInfo &kind, const PropertyDescriptor &d)
{
    const bool isShown = kind.type.GetFamily() == Nodes::NodeType::TypeWidget && isText(d) &&
                         d.choices.empty() && !Editor::fontOf(d.valueId);
    return isShown && QString::fromStdString(d.defaultText).contains(QRegularExpression("\\d"))
               ? "a default like a value"
               : "";
}

QString offenders(Rule rule)
{
    QStringList all;
    for (const KindInfo &kind : Nodes::KindTable::Instance().GetKinds()) {
        for (const PropertyDescriptor &d : kind.properties) {
            const QString reason = rule(kind, d);
            if (!reason.isEmpty())
                all << QString::fromStdString(kind.key + "." + d.key + ": ") + reason;
        }
    }
    return all.join('\n');
}

} // namespace

Q_DECLARE_METATYPE(Rule)

class KindEditorsTest : public QObject
{
    Q_OBJECT

private slots:
    void follows_data()
    {
        QTest::addColumn<Rule>("rule");
        QTest::newRow("has names") << &named;
        QTest::newRow("is bounded") << &bounded;
        QTest::newRow("leads to what fits") << &led;
        QTest::newRow("has an editor of its own") << &edited;
        QTest::newRow("starts with no value") << &defaulted;
    }

    void follows()
    {
        QFETCH(Rule, rule);
        QCOMPARE(offenders(rule), QString());
    }

    // What a real project has set can be shown and edited as it is.
    void showsEveryValueOfTheSample()
    {
        const std::string file = STATION_SOURCE_DIR "/projects/boiler/project.xml";
        std::unique_ptr<Nodes::NodesCollection> read;
        QVERIFY(Nodes::ProjectReader().ReadFile(file, read));
        const Nodes::NodesCollection &project = *read;
        QWidget window;
        int count = 0;
        visit(*project.GetRoot(), [&](const Nodes::ConfigNode &node) {
            for (const PropertyDescriptor &d : node.GetKind()->properties) {
                if (!node.GetKind()->IsDefault(d, node))
                    count += int(keeps(node, d, project, window));
            }
        });
        QVERIFY(count > 1000);
    }

private:
    template <class Visitor>
    static void visit(const Nodes::ConfigNode &node, const Visitor &visitor)
    {
        visitor(node);
        for (const auto &child : node.Children())
            visit(*child, visitor);
    }
    static bool keeps(const Nodes::ConfigNode &node, const PropertyDescriptor &d,
                      const Nodes::NodesCollection &project, QWidget &window)
    {
        const QString text = QString::fromStdString(d.binding.format(d, node));
        const std::unique_ptr<Editor::ValueEditor> editor(
            Editor::makeValueEditor({&d, node.GetNodeLink(), &project, {}}, &window));
        editor->setText(text);
        editor->showValue(text, true); // several selected: nobody has touched it
        const bool isShown = !editor->isTouched();
        editor->setText(text);
        const bool isKept =
            isShown && editor->text() == text && !editor->isTouched() &&
            (text.isEmpty() || !Editor::PropertyTexts::shown(d, text, &project).isEmpty());
        if (!isKept)
            QTest::qFail(qPrintable(QString::fromStdString(node.GetPath() + " " + d.key)), __FILE__,
                         __LINE__);
        return isKept;
    }
};

QTEST_MAIN(KindEditorsTest)
#include "tst_kind_editors.moc"
