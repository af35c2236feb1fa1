#include "widgets/reports/ReportCells.h"

#include "widgets/reports/engine/data/DataSourceManager.h"
#include "widgets/reports/engine/data/SnapshotTaker.h"
#include "widgets/reports/engine/data/TemplateSources.h"

#include <QPointer>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <QTimer>

using namespace LimeReport;

namespace {

/// Rows without end in sight: cell (r, c) is r * 10 + c + shift.
class Numbers : public QAbstractTableModel
{
public:
    Numbers(int rowCount, QObject *parent = nullptr) : QAbstractTableModel(parent), m_rows(rowCount)
    {
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : m_rows;
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : 2;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        ++asked;
        if (role == QualityRole)
            return index.row() == 3 ? QVariant(int(Nodes::Quality::Stale)) : QVariant();
        return role == Qt::DisplayRole ? QVariant(index.row() * 10 + index.column() + m_shift)
                                       : QVariant();
    }
    QVariant headerData(int section, Qt::Orientation, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(section ? "b" : "a") : QVariant();
    }
    void shift()
    {
        ++m_shift;
        emit dataChanged(index(0, 0), index(m_rows - 1, 1));
    }
    mutable int asked = 0;

private:
    int m_rows;
    int m_shift = 0;
};

class Shared : public Numbers, public SharedRowsModel
{
public:
    Shared() : Numbers(100000) {}
    SharedRowsPtr sharedRows() const override
    {
        return std::make_shared<ReportCells>(QStringList{"a"}, QVector<QVariantList>{{42}});
    }
};

bool isOfOneMoment(const DataSource &source)
{
    const int shift = source.value(0, 0).toInt();
    for (int row = 0; row < source.rowCount(); ++row)
        if (source.value(row, 1).toInt() != row * 10 + 1 + shift)
            return false;
    return true;
}

DataSet taken(const DataSourceManager &manager, SnapshotTaker &taker)
{
    DataSet data;
    const auto connection = QObject::connect(&taker, &SnapshotTaker::taken,
                                             [&data](const DataSet &told) { data = told; });
    QSignalSpy ended(&taker, &SnapshotTaker::taken);
    taker.setSlice(0);
    taker.start(manager);
    if (!ended.isEmpty() || !ended.wait(60000))
        qWarning("taken at once or never");
    QObject::disconnect(connection);
    return data;
}

} // namespace

Q_DECLARE_METATYPE(LimeReport::DataSet)

class tst_report_data : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<LimeReport::DataSet>("LimeReport::DataSet"); }
    void variables();
    void modelsByName();
    void slicesLeaveTheThreadFree();
    void changesMeanwhile();
    void changesWithoutEnd();
    void sharedRowsAreNotCopied();
    void modelsThatGo();
    void templateSources_data();
    void templateSources();
};

void tst_report_data::variables()
{
    DataSourceManager manager;
    QCOMPARE(manager.setTemplate(
                 {{"variables", QVariantList{QVariantMap{{"name", "a"}, {"value", 1}},
                                             QVariantMap{{"name", "b"}, {"value", 2}}}}}),
             QStringList());
    manager.setReportVariable("b", 3);
    manager.setReportVariable("c", 4);
    QCOMPARE(manager.variables(), QVariantMap({{"a", 1}, {"b", 3}, {"c", 4}}));
    manager.clearUserVariables();
    QCOMPARE(manager.variable("b"), QVariant(2));
    QVERIFY(!manager.containsVariable("c"));
    manager.deleteVariable("b");
    QVERIFY(!manager.variable("b").isValid());
    manager.setReportVariable("d", 5);
    manager.setTemplate({});
    QCOMPARE(manager.variables(), QVariantMap({{"d", 5}}));
}

void tst_report_data::modelsByName()
{
    DataSourceManager manager;
    QPointer<Numbers> owned = new Numbers(5);
    Numbers other(7);
    QVERIFY(!manager.addModel("", &other, false));
    QVERIFY(!manager.addModel("s", nullptr, false));
    QVERIFY(manager.addModel("s", owned, true));
    const DataSource source = manager.snapshot().sources.value("s");
    QCOMPARE(source.columns(), QStringList({"a", "b"}));
    QCOMPARE(source.value(4, "B"), QVariant(41));
    QCOMPARE(source.quality(3, 0), Nodes::Quality::Stale);
    QCOMPARE(source.quality(4, 0), Nodes::Quality::Good);
    QVERIFY(!source.value(5, 0).isValid() && !source.value(0, 2).isValid() &&
            !source.value(0, "x").isValid());
    QVERIFY(manager.addModel("s", owned, true)); // the same again stays
    QVERIFY(owned);
    QVERIFY(manager.addModel("s", &other, false)); // replaced: deleted
    QVERIFY(!owned);
    QCOMPARE(source.rowCount(), 5); // what was taken stays
    QCOMPARE(manager.snapshot().sources.value("s").rowCount(), 7);
    manager.removeModel("s");
    manager.removeModel("s");
    QVERIFY(!manager.containsDatasource("s"));
}

void tst_report_data::slicesLeaveTheThreadFree()
{
    DataSourceManager manager;
    manager.addModel("large", new Numbers(6000), true);
    manager.addModel("empty", new QStandardItemModel, true);
    SnapshotTaker taker;
    int turns = 0;
    QTimer other;
    connect(&other, &QTimer::timeout, this, [&turns] { ++turns; });
    other.start(0);
    const DataSet data = taken(manager, taker);
    QVERIFY(!taker.isRunning());
    QVERIFY(turns > 2); // others had their turns between the slices
    QCOMPARE(data.sources.keys(), QStringList({"empty", "large"}));
    QCOMPARE(data.sources["large"].rowCount(), 6000);
    QVERIFY(isOfOneMoment(data.sources["large"]));
    QCOMPARE(data.sources["empty"].rowCount(), 0);
}

void tst_report_data::changesMeanwhile()
{
    auto *model = new Numbers(6000);
    DataSourceManager manager;
    manager.addModel("s", model, true);
    SnapshotTaker taker;
    int changes = 0;
    QTimer changer;
    connect(&changer, &QTimer::timeout, this, [&] {
        if (model->asked > 2000 * (changes + 1) && changes < 3) {
            ++changes;
            model->shift();
        }
    });
    changer.start(0);
    const DataSet data = taken(manager, taker);
    QCOMPARE(changes, 3);
    QVERIFY(isOfOneMoment(data.sources["s"]));
    QCOMPARE(data.sources["s"].value(0, 0), QVariant(3));
}

void tst_report_data::changesWithoutEnd()
{
    auto *model = new Numbers(6000);
    DataSourceManager manager;
    manager.addModel("s", model, true);
    SnapshotTaker taker;
    QTimer changer;
    connect(&changer, &QTimer::timeout, model, &Numbers::shift);
    changer.start(0);
    const DataSet data = taken(manager, taker); // taken all the same
    QVERIFY(isOfOneMoment(data.sources["s"]));
}

void tst_report_data::sharedRowsAreNotCopied()
{
    Shared model;
    DataSourceManager manager;
    manager.addModel("s", &model, false);
    SnapshotTaker taker;
    QCOMPARE(taken(manager, taker).sources["s"].value(0, "a"), QVariant(42));
    QCOMPARE(manager.snapshot().sources["s"].rowCount(), 1);
    QCOMPARE(model.asked, 0);
}

void tst_report_data::modelsThatGo()
{
    auto *model = new Numbers(6000);
    DataSourceManager manager;
    manager.addModel("s", model, false);
    SnapshotTaker taker;
    QTimer killer;
    connect(&killer, &QTimer::timeout, this, [&] {
        if (model && model->asked > 1000) {
            delete model;
            model = nullptr;
        }
    });
    killer.start(0);
    QVERIFY(!taken(manager, taker).sources.contains("s"));
    QVERIFY(!model);
    QVERIFY(!manager.containsDatasource("s"));

    QSignalSpy ended(&taker, &SnapshotTaker::taken);
    taker.start(manager);
    taker.cancel();
    QCoreApplication::processEvents();
    QVERIFY(ended.isEmpty());
    taker.start(manager); // may be begun again
    QVERIFY(ended.wait());
}

void tst_report_data::templateSources_data()
{
    QTest::addColumn<QVariantList>("links");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("errors");

    const auto link = [](const QString &name, const QString &master, const QString &child) {
        return QVariantMap{
            {"name", name},
            {"master", master},
            {"child", child},
            {"fieldsCorrelation", QVariantList{QVariantMap{{"master", "id"}, {"detail", "of"}}}}};
    };
    QTest::newRow("chain") << QVariantList{link("b", "a", "x"), link("c", "b", "y")}
                           << QStringList{"b", "c"} << 0;
    QTest::newRow("named after its child")
        << QVariantList{link("", "a", "x")} << QStringList{"x"} << 0;
    QTest::newRow("no pair") << QVariantList{QVariantMap{
                                    {"name", "b"}, {"master", "a"}, {"child", "x"}}}
                             << QStringList{} << 1;
    QTest::newRow("no master") << QVariantList{link("b", "", "x")} << QStringList{} << 1;
    QTest::newRow("of itself") << QVariantList{link("b", "b", "x")} << QStringList{} << 1;
    QTest::newRow("circle") << QVariantList{link("b", "c", "x"), link("c", "b", "y")}
                            << QStringList{"b"} << 1;
}

void tst_report_data::templateSources()
{
    QFETCH(QVariantList, links);
    const TemplateSources told = TemplateSources::read({{"subproxies", links}});
    QStringList names;
    for (const DetailLink &link : told.links)
        names += link.name;
    QTEST(names, "names");
    QTEST(told.errors.size(), "errors");
    DataSourceManager manager;
    QTEST(manager.setTemplate({{"subproxies", links}}).size(), "errors");
    for (const QString &name : names)
        QVERIFY(manager.containsDatasource(name));
}

QTEST_GUILESS_MAIN(tst_report_data)
#include "tst_report_data.moc"
