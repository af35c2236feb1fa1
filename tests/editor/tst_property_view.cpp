#include "PropertyFixture.h"

#include "editor/properties/PropertyDelegate.h"
#include "editor/properties/PropertyView.h"
#include "editor/properties/font/FontWindow.h"
#include "editor/properties/links/LinksWindow.h"

#include <QCheckBox>
#include <QDataStream>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QtTest>

using Editor::PropertyModel;
using Editor::PropertyView;
using Editor::ValueEditor;

namespace {

struct Shown : PropertyFixture
{
    Shown() : view({push()})
    {
        view.resize(320, 400);
        view.show();
        select({a});
    }
    void select(std::initializer_list<Nodes::ConfigNode *> nodes)
    {
        view.setNodes(Nodes::NodeLinks(nodes.begin(), nodes.end()));
    }
    void go(const char *key)
    {
        const QModelIndex row = view.find(QString::fromUtf8(key));
        view.setCurrentIndex(row.sibling(row.row(), PropertyModel::ColumnValue));
    }
    /// Opens the editor of a row as Enter does; its line.
    QLineEdit *edit(const char *key)
    {
        go(key);
        QTest::keyClick(&view, Qt::Key_Return);
        ValueEditor *editor = view.delegate().openEditor();
        return editor ? editor->findChild<QLineEdit *>() : nullptr;
    }
    QWidget *focus() { return view.delegate().openEditor()->focusProxy(); }
    int rows() const
    {
        int count = 0;
        for (int i = 0; i < view.model()->rowCount(); ++i)
            count += view.model()->rowCount(view.model()->index(i, 0));
        return count;
    }

    PropertyView view;
};

} // namespace

class PropertyViewTest : public QObject
{
    Q_OBJECT

private slots:
    void worksByKeyboard()
    {
        Shown s;
        s.edit("x")->setText("77");
        QTest::keyClick(s.focus(), Qt::Key_Escape);
        QVERIFY(!s.view.delegate().openEditor());
        QCOMPARE(textOf(*s.a, "x"), std::string("10"));

        QLineEdit *line = s.edit("x");
        line->selectAll();
        QTest::keyClicks(line, "31");
        QTest::keyClick(s.focus(), Qt::Key_Tab);
        QCOMPARE(textOf(*s.a, "x"), std::string("31"));
        QVERIFY(s.view.delegate().openEditor()); // of the next row
        QCOMPARE(s.view.currentIndex().data(PropertyModel::KeyRole).toString(), QString("y"));
        QTest::keyClick(s.focus(), Qt::Key_Return);

        s.go("visible");
        QTest::keyClick(&s.view, Qt::Key_Space);
        QCOMPARE(textOf(*s.a, "visible"), std::string("false"));
        QTest::keyClick(&s.view, Qt::Key_Backspace, Qt::ControlModifier);
        QCOMPARE(textOf(*s.a, "visible"), std::string("true"));
        QCOMPARE(s.stack.count(), 3);
    }

    void spinsAsOneStepAndTakesItBack()
    {
        Shown s;
        s.edit("x");
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(s.focus(), Qt::Key_Up);
        QCOMPARE(textOf(*s.a, "x"), std::string("13"));
        QTest::keyClick(s.focus(), Qt::Key_Return);
        QCOMPARE(s.stack.count(), 1);
        s.edit("x");
        QTest::keyClick(s.focus(), Qt::Key_Down);
        QCOMPARE(textOf(*s.a, "x"), std::string("12"));
        QTest::keyClick(s.focus(), Qt::Key_Escape);
        QCOMPARE(textOf(*s.a, "x"), std::string("13"));
        QCOMPARE(s.stack.count(), 1);
    }

    void staysOpenWithWhatWasRefused()
    {
        Shown s;
        QLineEdit *line = s.edit("width");
        line->selectAll();
        QTest::keyClicks(line, "-4");
        QTest::keyClick(s.focus(), Qt::Key_Return);
        QVERIFY(s.view.delegate().openEditor());
        QCOMPARE(line->text(), QStringLiteral("-4"));
        QVERIFY(!s.view.delegate().openEditor()->error().isEmpty());
        QVERIFY(s.a->SetPropertyText("width", "55")); // from elsewhere meanwhile
        s.view.properties().refresh();
        QCOMPARE(line->text(), QStringLiteral("-4"));
        line->setText("60");
        QTest::keyClick(s.focus(), Qt::Key_Return);
        QVERIFY(!s.view.delegate().openEditor());
        QCOMPARE(textOf(*s.a, "width"), std::string("60"));
    }

    void saysThatValuesDifferUntilOneIsGiven()
    {
        Shown s;
        s.set(s.b, {{"text", "другой"}});
        s.select({s.a, s.b});
        const QLineEdit *line = s.edit("text");
        QVERIFY(line);
        QCOMPARE(line->text(), QString());
        QCOMPARE(line->placeholderText(), QStringLiteral("<разные>"));
        QTest::keyClick(s.focus(), Qt::Key_Return);
        QCOMPARE(textOf(*s.b, "text"), std::string("другой"));
        QTest::keyClicks(s.edit("text"), "one");
        QTest::keyClick(s.focus(), Qt::Key_Return);
        QCOMPARE(textOf(*s.a, "text") + textOf(*s.b, "text"), std::string("oneone"));
        QCOMPARE(s.edit("x")->text(), QString());
        QTest::keyClick(s.focus(), Qt::Key_Up);
        QCOMPARE(textOf(*s.b, "x"), std::string("11")); // from that of the first
    }

    void endsWithItsNode()
    {
        Shown s;
        QTest::keyClicks(s.edit("text"), "!");
        QVERIFY(s.layer->DeleteNode(s.a->GetId()));
        QTRY_VERIFY(!s.view.delegate().openEditor());
        QCOMPARE(s.view.model()->rowCount(), 0);
        QCOMPARE(s.stack.count(), 0);
    }

    void givesWhatIsTypedToTheNodesItIsFor()
    {
        Shown s;
        QLineEdit *line = s.edit("text");
        line->selectAll();
        QTest::keyClicks(line, "typed");
        s.select({s.b});
        QCOMPARE(textOf(*s.a, "text"), std::string("typed"));
        QCOMPARE(textOf(*s.b, "text"), std::string("Котёл"));
    }

    void keepsItsPlaceFromSelectionToSelection()
    {
        Shown s;
        s.view.setExpanded(s.view.find("#look"), false);
        s.view.setExpanded(s.view.find("#font12210"), true);
        s.go("movable");
        s.view.verticalScrollBar()->setValue(120);
        const int scrolled = s.view.verticalScrollBar()->value();
        QVERIFY(scrolled > 0);
        s.select({s.multi}); // other rows
        QCOMPARE(s.view.currentIndex().data(PropertyModel::KeyRole).toString(), QString("movable"));
        QVERIFY(!s.view.isExpanded(s.view.find("#look")));
        s.select({s.b});
        QVERIFY(!s.view.isExpanded(s.view.find("#look")));
        QVERIFY(s.view.isExpanded(s.view.find("#general")));
        QVERIFY(s.view.isExpanded(s.view.find("#font12210")));
    }

    void findsByNameKeyAndGroup()
    {
        Shown s;
        const int all = s.rows();
        s.view.search("шир");
        QCOMPARE(s.rows(), 1);
        s.view.search("onPress");
        QCOMPARE(s.rows(), 1);
        s.view.search("действия");
        QVERIFY(s.rows() > 5 && s.rows() < all);
        s.view.search("нет такого");
        QCOMPARE(s.view.model()->rowCount(), 0);
        s.view.search("");
        QCOMPARE(s.rows(), all);
    }

    void movesNothingThatIsDroppedOnIt()
    {
        Shown s;
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << QString::number(s.signal->GetId());
        QMimeData mime;
        mime.setData("application/nodelink", bytes);
        s.go("signal");
        const QPoint at = s.view.visualRect(s.view.currentIndex()).center();
        const Qt::DropActions offered = Qt::MoveAction | Qt::CopyAction;
        const auto send = [&](QDropEvent &&event) {
            event.setDropAction(Qt::MoveAction); // as a tree proposes
            QCoreApplication::sendEvent(s.view.viewport(), &event);
            QVERIFY(event.isAccepted());
            QCOMPARE(event.dropAction(), Qt::CopyAction);
        };
        send(QDragEnterEvent(at, offered, &mime, Qt::LeftButton, Qt::NoModifier));
        send(QDragMoveEvent(at, offered, &mime, Qt::LeftButton, Qt::NoModifier));
        send(QDropEvent(at, offered, &mime, Qt::LeftButton, Qt::NoModifier));
        QCOMPARE(textOf(*s.a, "signal"), idOf(s.signal));
    }

    void editsAListInItsWindow()
    {
        Shown s;
        s.go("onPress");
        QTest::keyClick(&s.view, Qt::Key_Return);
        auto *window = s.view.findChild<Editor::LinksWindow *>();
        QVERIFY(window);
        window->add({s.action});
        window->create(s.kind("actionShowWindow"));
        QCOMPARE(s.stack.count(), 2);
        const Nodes::ConfigNode *made = s.root()->GetObjects(Nodes::NodeType::TypeAction).back();
        QCOMPARE(textOf(*s.a, "onPress"), idOf(s.action) + " " + idOf(made));
        window->moveCurrent(-1);
        QCOMPARE(textOf(*s.a, "onPress"), idOf(made) + " " + idOf(s.action));
        window->removeCurrent();
        QCOMPARE(textOf(*s.a, "onPress"), idOf(s.action));
        for (int i = 0; i < 3; ++i)
            s.stack.undo();
        QCOMPARE(textOf(*s.a, "onPress"), idOf(s.action));
        QCOMPARE(s.root()->GetObjects(Nodes::NodeType::TypeAction).size(), std::size_t(1));
        s.select({s.multi});
        QVERIFY(!window->isVisible());
    }

    void setsAFontAsOneStepAndLeavesWhatDiffers()
    {
        Shown s;
        s.set(s.a, {{"fontSize", "20"}, {"italic", "true"}});
        s.select({s.a, s.b});
        s.go("#font12210");
        QTest::keyClick(&s.view, Qt::Key_Return);
        auto *window = s.view.findChild<Editor::FontWindow *>();
        QVERIFY(window);
        const QList<QCheckBox *> styles = window->findChildren<QCheckBox *>();
        QCOMPARE(styles[1]->checkState(), Qt::PartiallyChecked); // italic
        styles[0]->click();                                      // bold
        window->findChild<QDialogButtonBox *>()->buttons().first()->click();
        for (const Nodes::ConfigNode *node : {s.a, s.b})
            QCOMPARE(textOf(*node, "bold"), std::string("true"));
        QCOMPARE(textOf(*s.a, "italic") + textOf(*s.b, "italic"), std::string("truefalse"));
        QCOMPARE(textOf(*s.a, "fontSize"), std::string("20"));
        QCOMPARE(s.stack.count(), 1);
    }
};

QTEST_MAIN(PropertyViewTest)
#include "tst_property_view.moc"
