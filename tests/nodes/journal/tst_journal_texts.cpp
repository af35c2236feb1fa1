#include "nodes/journal/EventJournal.h"
#include "nodes/journal/texts/TextFilter.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/Clock.h"
#include "support/Rows.h"

#include <QTemporaryDir>
#include <QtTest>

#include <random>

using namespace Nodes;

Q_DECLARE_METATYPE(Nodes::JournalQuery)

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp day = 86400 * second;
constexpr int rows = 9000; // some blocks, and some behind them

/// Letters of two alphabets, digits and bytes that are no letters.
std::string randomText(std::mt19937 &random, int letters)
{
    static const std::vector<std::string> alphabet{"а", "б", "Ж", "я", "Ё",    "x",   "Y",
                                                   "7", " ", "№", "😀", "\xd0", "\x80"};
    std::string text;
    for (int i = 0; i < letters; ++i)
        text += alphabet[random() % alphabet.size()];
    return text;
}

} // namespace

class TestJournalTexts : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_file = m_directory->filePath("journal.sqlite").toStdString();
    }

    void filter_data()
    {
        const Rows<std::string, bool> row("wanted", "expected");
        row("any case", "НАСОС 1", true);
        row("over the end of a text", "отказключён", false);
        row("another word", "задвижка", false);
        row("words in another order", "отказ насос", false);
        row("too short to tell", "зд", true);
        row("nothing", "", true);
    }

    void filter()
    {
        QFETCH(std::string, wanted);
        TextFilter filter;
        filter.Add("Насос 1: отказ");
        filter.Add("Ключён");
        QTEST(TextFilter::MayHold(filter.Pack(), TextFilter::Wanted(wanted)), "expected");
        QVERIFY(TextFilter::MayHold("no filter", TextFilter::Wanted(wanted)));
    }

    // What is there is never ruled out, whatever its bytes; what is not nearly always.
    void filterNeverHides()
    {
        std::mt19937 random(5);
        TextFilter filter;
        std::vector<std::string> texts;
        for (int i = 0; i < 200; ++i)
            filter.Add(texts.emplace_back(randomText(random, 1 + int(random() % 20))));
        const std::string packed = filter.Pack();
        for (const std::string &text : texts) {
            const std::size_t begin = random() % text.size();
            const TextFilter::Wanted part(text.substr(begin, random() % 30));
            QVERIFY2(TextFilter::MayHold(packed, part), text.c_str());
        }
        int passed = 0;
        for (int i = 0; i < 1000; ++i)
            passed += TextFilter::MayHold(packed, TextFilter::Wanted(randomText(random, 20)));
        QVERIFY2(passed < 10, qPrintable(QString::number(passed)));
    }

    void search_data()
    {
        QTest::addColumn<JournalQuery>("query");
        const auto row = [](const char *name, auto edit) {
            JournalQuery query;
            query.text = "обрыв ШЛЕЙФА";
            edit(query);
            QTest::newRow(name) << query;
        };
        row("oldest first", [](auto &) {});
        row("newest first", [](auto &q) { q.order = JournalQuery::NewestFirst; });
        row("interval", [](auto &q) {
            q.begin = 1500 * second;
            q.end = 8400 * second;
        });
        row("behind an entry", [](auto &q) { q.after = JournalKey{2600 * second, 1}; });
        row("too short for the index", [](auto &q) { q.text = "ШЛ"; });
        row("in all entries", [](auto &q) { q.text = "запись"; });
        row("in none", [](auto &q) { q.text = "пожар"; });
    }

    // The same as who reads everything finds, whatever is indexed by then. Times come in disorder.
    void search()
    {
        QFETCH(JournalQuery, query);
        EventJournal journal;
        QVERIFY(journal.Open(m_file));
        append(journal, rows, [](int i) { return Timestamp((i ^ 2047) + 1) * second; });
        JournalQuery all = query;
        all.text.clear();
        all.limit = rows;
        const QStringList expected = texts(journal, all, query.text);
        QCOMPARE(expected.isEmpty(), query.text == "пожар");
        QTRY_VERIFY(number("SELECT max(last) FROM text_blocks_1") > rows - 5 * 1024);
        query.limit = rows;
        QCOMPARE(texts(journal, query), expected);
        query.limit = 7; // pages
        QStringList paged;
        std::vector<BasicEvent> page;
        do {
            QVERIFY(journal.Query(query, page));
            for (const BasicEvent &event : page)
                paged << QString::fromStdString(event.text);
            if (!page.empty())
                query.after = JournalKey::Of(page.back());
        } while (page.size() == query.limit && paged.size() < 100);
        QCOMPARE(paged, expected.mid(0, paged.size()));
        QVERIFY(paged.size() == expected.size() || paged.size() >= 100);
    }

    // A file that was written before there was an index gets one, and what retention takes leaves
    // it.
    void followsTheRows()
    {
        const Timestamp now = Clock::Current().Now();
        {
            EventJournal journal;
            QVERIFY(journal.Open(m_file));
            append(journal, rows, [now](int i) { return now - 100 * day + i; });
        }
        execute("DROP TABLE IF EXISTS text_blocks_1");
        EventJournal journal;
        journal.SetRetention({60 * day, 0});
        QVERIFY(journal.Open(m_file));
        QTRY_COMPARE(number("SELECT max(last) FROM text_blocks_1"), 8 * 1024);
        append(journal, rows, [now](int i) { return now + i; });
        QTRY_VERIFY(number("SELECT min(id) FROM events") > rows / 2);
        append(journal, rows, [now](int i) { return now + second + i; });
        QTRY_VERIFY(number("SELECT min(last) FROM text_blocks_1") > rows / 2);
        JournalQuery query;
        query.text = "шлейфа 10";
        QCOMPARE(texts(journal, query).size(), 2);
        QVERIFY(journal.Verify());
    }

private:
    /// One in 900 entries tells of a loop, and each has its number.
    template <class TimeOf> static void append(EventJournal &journal, int count, TimeOf timeOf)
    {
        for (int i = 0; i < count; ++i) {
            BasicEvent event;
            event.time = timeOf(i);
            event.source = "Котёл 1";
            event.text = (i % 900 == 100 ? "Обрыв шлейфа " : "Запись ") + std::to_string(i / 100);
            if (i % 900 == 100)
                event.text += ", запись";
            QVERIFY(journal.Append(event));
        }
        QVERIFY(journal.Flush());
    }

    /// Texts found, of those only that hold a part in any case.
    static QStringList texts(const EventJournal &journal, const JournalQuery &query,
                             const std::string &part = {})
    {
        std::vector<BasicEvent> events;
        const Result result = journal.Query(query, events);
        if (!result)
            return {QString::fromStdString(result.ToString())};
        QStringList list;
        for (const BasicEvent &event : events) {
            const QString text = QString::fromStdString(event.text);
            if (text.contains(QString::fromStdString(part), Qt::CaseInsensitive))
                list << text;
        }
        return list;
    }

    void execute(const char *sql) const
    {
        SqliteDatabase database;
        QVERIFY(database.Open(m_file, SqliteDatabase::Mode::ReadWrite));
        QVERIFY(database.Execute(sql));
    }

    /// 0 while there is none.
    int number(const char *sql) const
    {
        SqliteDatabase database;
        if (!database.Open(m_file, SqliteDatabase::Mode::ReadOnly))
            return 0;
        SqliteStatement statement(database, sql);
        return statement.Step() ? int(statement.Integer(0)) : 0;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::string m_file;
};

QTEST_APPLESS_MAIN(TestJournalTexts)
#include "tst_journal_texts.moc"
