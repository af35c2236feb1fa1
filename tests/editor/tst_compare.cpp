#include "editor/compare/CompareView.h"
#include "editor/compare/DifferencesModel.h"
#include "editor/compare/PicturePair.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/system/systemCore.h"
#include "widgets/context/ProcessContext.h"
#include "widgets/context/UnheardActions.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTreeView>
#include <QtTest>

using namespace Editor;

namespace {

std::unique_ptr<Nodes::NodesCollection> read(const char *elements)
{
    Nodes::ProjectReader reader;
    std::unique_ptr<Nodes::NodesCollection> project;
    const std::string text = std::string("<project format=\"1\" id=\"1\" name=\"P\">"
                                         "<folder id=\"2\" name=\"F\"/>"
                                         "<window id=\"10\" name=\"W\" width=\"300\" "
                                         "height=\"200\">") +
                             elements + "</window></project>";
    if (!reader.ReadBuffer(text, "p.xml", project))
        throw std::runtime_error("not read");
    return project;
}

constexpr const char *before =
    "<label id=\"11\" name=\"a\" x=\"40\" y=\"60\" width=\"80\" height=\"30\"/>"
    "<label id=\"12\" name=\"b\" x=\"200\" y=\"60\" width=\"80\" height=\"30\"/>";
constexpr const char *after =
    "<label id=\"11\" name=\"a\" x=\"40\" y=\"120\" width=\"80\" height=\"30\" text=\"T\"/>"
    "<label id=\"13\" name=\"c\" x=\"200\" y=\"10\" width=\"80\" height=\"30\"/>";

} // namespace

class CompareTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_core.SetWorkMode(Nodes::WorkModeEditing); }

    void init()
    {
        m_before = read(before);
        m_after = read(after);
        m_view = std::make_unique<CompareView>();
        m_view->resize(1366, 768);
        m_view->show();
        m_view->setProjects({"left", m_before.get()}, {"right", m_after.get()});
    }

    void listsWhatDiffers()
    {
        auto *model = m_view->findChild<DifferencesModel *>();
        const QAbstractItemModelTester tester(model);
        const QAbstractItemModel &rows = *m_view->tree().model();
        QCOMPARE(rows.rowCount(), 3);
        const QModelIndex changed = rows.index(0, 0);
        QVERIFY(changed.data().toString().contains("≠"));
        QCOMPARE(rows.rowCount(changed), 2); // place and text
        QCOMPARE(rows.index(0, DifferencesModel::BeforeColumn, changed).data().toString(),
                 QString("60"));
        QCOMPARE(rows.index(0, DifferencesModel::AfterColumn, changed).data().toString(),
                 QString("120"));
        QVERIFY(rows.index(1, 0).data().toString().contains("＋"));
        QVERIFY(rows.index(2, 0).data().toString().contains("－"));
        m_view->findChild<QLineEdit *>()->setText("120");
        QCOMPARE(rows.rowCount(), 1); // found in a row below
        m_view->setProjects({"left", m_after.get()}, {"right", m_after.get()});
        QVERIFY(m_view->summary().contains("Различий нет"));
    }

    // A picture is asked where the outlines of the elements are.
    void marksPictures()
    {
        const QImage left = m_view->pictures().picture(0);
        const QImage right = m_view->pictures().picture(1);
        QCOMPARE(left.size(), QSize(300, 200));
        QCOMPARE(right.size(), QSize(300, 200));
        const QPoint wasAt(80, 56), isAt(80, 116), added(240, 42), removed(240, 92);
        QVERIFY(left.pixel(wasAt) != right.pixel(wasAt));
        QVERIFY(right.pixel(isAt) != left.pixel(isAt));
        QVERIFY(right.pixel(added) != left.pixel(added));
        QVERIFY(left.pixel(removed) != right.pixel(removed));
        QVERIFY(right.pixel(added) != right.pixel(isAt)); // other kinds, other colours
    }

    void showsInItsOwnSizeWhatDiffers()
    {
        m_view->resize(500, 500);
        m_view->tree().setCurrentIndex(m_view->tree().model()->index(2, 0));
        const auto frameWidth = [this] { // of what is removed, by the colour of its frame
            const QImage picture = m_view->pictures().picture(0);
            int left = picture.width(), right = 0;
            for (int x = 0; x < picture.width(); ++x) {
                for (int y = 0; y < picture.height(); ++y) {
                    if (picture.pixelColor(x, y) == QColor(176, 32, 32)) {
                        left = std::min(left, x);
                        right = x;
                    }
                }
            }
            return right - left;
        };
        const int close = frameWidth();
        QVERIFY2(close >= 80, qPrintable(QString::number(close)));
        m_view->pictures().closeUp().setChecked(false);
        QVERIFY(frameWidth() > 0);
        QVERIFY(frameWidth() < 80);
    }

    void showsTheSameWindowForWhatIsNew()
    {
        m_view->tree().setCurrentIndex(m_view->tree().model()->index(1, 0));
        QVERIFY(!m_view->pictures().picture(0).isNull());
        QVERIFY(!m_view->pictures().picture(1).isNull());
        m_view->pictures().showDifference(nullptr);
        QVERIFY(m_view->pictures().picture(0).isNull());
    }

    void leadsToTheNode()
    {
        std::vector<unsigned long> nodes;
        connect(m_view.get(), &CompareView::nodeActivated, this,
                [&](const Nodes::NodeLink &node) { nodes.push_back(node.GetNodeId()); });
        const QAbstractItemModel &rows = *m_view->tree().model();
        for (int row = 0; row < 3; ++row)
            emit m_view->tree().activated(rows.index(row, 0));
        QCOMPARE(nodes, (std::vector<unsigned long>{11, 13})); // what is removed leads nowhere
    }

private:
    Nodes::systemCore m_core;
    Widgets::UnheardActions m_actions;
    QObject m_gestures;
    Widgets::ProcessContext m_context{&m_core, m_actions, m_gestures};
    std::unique_ptr<Nodes::NodesCollection> m_before;
    std::unique_ptr<Nodes::NodesCollection> m_after;
    std::unique_ptr<CompareView> m_view;
};

QTEST_MAIN(CompareTest)
#include "tst_compare.moc"
