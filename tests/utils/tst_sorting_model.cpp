#include "utils/models/SortingModel.h"

#include <QAbstractItemModelTester>
#include <QStandardItemModel>
#include <QtTest>

using Utils::SortingModel;

/// Rows of priority, text and number; each test sees them as the texts from top to bottom.
class SortingModelTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void keysInOrder();
    void textsByAlphabet();
    void changesKeepOrder();
    void inactiveRowsLeaveAndReturn();

private:
    void addRow(int priority, const QString &text, int number)
    {
        const int row = m_source->rowCount();
        m_source->insertRow(row);
        int column = 0;
        for (const QVariant &value : {QVariant(priority), QVariant(text), QVariant(number)})
            m_source->setData(m_source->index(row, column++), value);
    }
    QString shown() const
    {
        QStringList texts;
        for (int row = 0; row < m_sorted->rowCount(); ++row)
            texts << m_sorted->index(row, 1).data().toString();
        return texts.join(QLatin1Char(' '));
    }

    std::unique_ptr<QStandardItemModel> m_source;
    std::unique_ptr<SortingModel> m_sorted;
};

void SortingModelTest::init()
{
    m_sorted = std::make_unique<SortingModel>();
    m_source = std::make_unique<QStandardItemModel>(0, 3);
    m_sorted->setSourceModel(m_source.get());
    new QAbstractItemModelTester(m_sorted.get(), m_sorted.get());
    addRow(2, "b", 10);
    addRow(1, "A", 9);
    addRow(2, "a", 100);
    addRow(1, "b", 9);
}

void SortingModelTest::keysInOrder()
{
    m_sorted->addSortColumn(0, Qt::DescendingOrder);
    m_sorted->addSortColumn(2);
    QCOMPARE(shown(), QStringLiteral("b a A b")); // 10 before 100; equal rows as in the source
    m_sorted->addSortColumn(2, Qt::DescendingOrder);
    QCOMPARE(shown(), QStringLiteral("a b A b"));
    m_sorted->sortColumn(1);
    QCOMPARE(shown(), QStringLiteral("A a b b"));
    m_sorted->sortColumn(1);
    QCOMPARE(shown(), QStringLiteral("b b A a"));
}

void SortingModelTest::textsByAlphabet()
{
    for (const char *text : {"Насос-10", "ЖК", "ёлка", "насос-2", "Есть"})
        addRow(0, QString::fromUtf8(text), 0);
    m_sorted->addSortColumn(1);
    QVERIFY2(shown().startsWith(QStringLiteral("ёлка Есть ЖК насос-2 Насос-10")),
             qPrintable(shown()));
}

void SortingModelTest::changesKeepOrder()
{
    m_sorted->addSortColumn(0);
    m_sorted->addSortColumn(2);
    const QPersistentModelIndex selected = m_sorted->mapFromSource(m_source->index(2, 1));
    m_source->setData(m_source->index(2, 2), 5); // the lesser key only
    QCOMPARE(shown(), QStringLiteral("A b a b"));
    QCOMPARE(selected.data().toString(), QStringLiteral("a"));
    m_source->setData(m_source->index(2, 0), 0);
    QCOMPARE(shown(), QStringLiteral("a A b b"));
}

void SortingModelTest::inactiveRowsLeaveAndReturn()
{
    m_sorted->addSortColumn(1);
    m_sorted->setHideInactive(true);
    QCOMPARE(m_sorted->rowCount(), 4); // nothing is inactive until a test says so
    m_sorted->setInactiveTest([](const QModelIndex &row) { return row.data().toInt() == 1; });
    QCOMPARE(shown(), QStringLiteral("a b"));
    m_source->setData(m_source->index(0, 0), 1);
    QCOMPARE(shown(), QStringLiteral("a"));
    m_sorted->setDynamicSortFilter(false);
    m_source->setData(m_source->index(0, 1), "c");
    m_sorted->setHideInactive(false);
    m_sorted->updateSort();
    QCOMPARE(shown(), QStringLiteral("A a b c"));
}

QTEST_MAIN(SortingModelTest)
#include "tst_sorting_model.moc"
