// Tables as no engineer should paste them: random columns, separators, names and values. Whatever
// they are, each cell is either taken over or refused with a reason, an import again changes
// nothing more, and undo and redo lead to the same project byte for byte. A failure names its seed;
// STATION_TEST_SEED=n repeats it.
#include "editor/SheetFixture.h"

#include "nodes/model/KindTable.h"
#include "nodes/project/signals/NamePattern.h"
#include "nodes/project/signals/SheetPlan.h"
#include "support/Rows.h"

#include <QCoreApplication>

#include <random>

using namespace Editor;

namespace {

constexpr int editCount = 60;

class Engineer
{
public:
    explicit Engineer(unsigned seed) : m_random(seed)
    {
        m_plant.model = std::make_unique<SheetModel>(m_plant.workspace, m_plant.device,
                                                     Nodes::NodeType::TypeSignal);
    }

    SheetFixture &plant() { return m_plant; }

    /// What is wrong with the edit; empty when nothing is.
    QString edit()
    {
        QCoreApplication::processEvents(); // the table follows the edit before
        switch (upTo(6)) {
        case 0:
            (void)SheetEdits::fillDown(m_plant.workspace, *m_plant.model, cells());
            return {};
        case 1:
            return rename();
        case 2:
            (void)SheetEdits::paste(m_plant.workspace, *m_plant.model, sheet({}).toStdString(),
                                    upTo(m_plant.model->rowCount() + 2),
                                    upTo(m_plant.model->columnCount()), cells());
            return {};
        default:
            return importSheet();
        }
    }

private:
    int upTo(int count) { return int(m_random() % unsigned(std::max(count, 1))); }
    QString any(const QStringList &of) { return of[upTo(of.size())]; }

    SheetEdits::Cells cells()
    {
        SheetEdits::Cells chosen;
        for (int i = upTo(5); i-- > 0 && m_plant.model->rowCount() > 0;)
            chosen.emplace_back(upTo(m_plant.model->rowCount()),
                                upTo(m_plant.model->columnCount()));
        return chosen;
    }

    QString value(const QString &column)
    {
        static const QStringList garbage{"",      "ерунда",      "-1",    "1e400", "nan",
                                         " ",     "a\"b;c,d\te", "7",     "\n",    "=1",
                                         "65536", "0,5",         "1 000", "да"};
        static const QMap<QString, QStringList> fitting{
            {"Имя",
             {"Т01", "Т02", "Г1/Т01", "К1/А", "К1/Б", "К2/Ц/В", "К2/Г", "/", "А//Б", "Г1", " x "}},
            {"Адрес", {"0", "5", "130", "1000", "1007", "65535"}},
            {"Таблица", {"Регистры хранения", "input", "coils"}},
            {"Тип данных", {"uint16", "float32", "bool", "Бит регистра"}},
            {"Множитель", {"1", "0,50", "2.5"}},
            {"Архив", {"да", "нет", "да"}},
            {"Вид", {"Сигнал Modbus", "modbusSignal", "Сигнал в памяти"}},
        };
        return any(upTo(4) > 0 && fitting.contains(column) ? fitting[column] : garbage);
    }

    QString sheet(QStringList columns)
    {
        const QChar separator = any({"\t", ";", ","})[0];
        const QString lineEnd = any({"\n", "\r\n"});
        Nodes::TextTable table;
        if (!columns.isEmpty())
            table.emplace_back();
        for (const QString &column : columns)
            table[0].push_back(column.toStdString());
        for (int i = 1 + upTo(8); i-- > 0;) {
            table.emplace_back();
            for (int j = 0; j < (columns.isEmpty() ? 3 : columns.size() + (upTo(9) == 0)); ++j)
                table.back().push_back(value(columns.value(j)).toStdString());
        }
        return QString::fromStdString(
            Nodes::DelimitedText::Write(table, separator.toLatin1(), lineEnd.toStdString()));
    }

    QString importSheet()
    {
        QStringList columns{"Имя"};
        for (const char *column : {"Адрес", "Таблица", "Тип данных", "Множитель", "Архив", "Вид",
                                   "Описание", "Шкаф", "Имя"}) {
            if (upTo(2) == 0)
                columns.insert(upTo(columns.size() + 1), column);
        }
        const std::string text = sheet(columns).toStdString();
        const auto take = [&] {
            return SheetEdits::paste(m_plant.workspace, *m_plant.model, text, 0, 0, {});
        };
        const auto first = take();
        const std::string once = m_plant.text();
        QCoreApplication::processEvents();
        const auto second = take();
        if (m_plant.text() != once)
            return "taken over again, the table changes the project: " +
                   QString::fromStdString(text) + difference(once, m_plant.text());
        return rowsOf(first) == rowsOf(second)
                   ? QString()
                   : "rows refused at first " + rowsOf(first) + ", then " + rowsOf(second) +
                         " of " + QString::fromStdString(text);
    }

    /// The first line that has changed, as it was and as it is.
    static QString difference(const std::string &before, const std::string &after)
    {
        const QStringList was = QString::fromStdString(before).split('\n');
        const QStringList is = QString::fromStdString(after).split('\n');
        int line = 0;
        while (line < was.size() && line < is.size() && was[line] == is[line])
            ++line;
        return was.value(line) + " became " + is.value(line);
    }

    static QString rowsOf(const SheetEdits::Refusals &refusals)
    {
        QStringList rows;
        for (const Nodes::SheetRefusal &refusal : refusals)
            rows << QString::number(refusal.row);
        rows.removeDuplicates();
        rows.sort();
        return rows.join(' ');
    }

    QString rename()
    {
        const std::string before = m_plant.text();
        Nodes::NodeLinks nodes;
        std::vector<std::string> names;
        for (const auto &[row, column] : cells()) {
            nodes.push_back(m_plant.model->node(row));
            names.push_back(value("Имя").toStdString());
        }
        const bool isRefused = !SheetEdits::rename(m_plant.workspace, nodes, names).empty();
        return isRefused && m_plant.text() != before ? "renamed by half" : QString();
    }

    SheetFixture m_plant;
    std::mt19937 m_random;
};

} // namespace

class RandomSheetsTest : public QObject
{
    Q_OBJECT

private slots:
    void loseNothing_data()
    {
        const Rows<unsigned> row("seed");
        if (qEnvironmentVariableIsSet("STATION_TEST_SEED")) {
            row("given", qEnvironmentVariableIntValue("STATION_TEST_SEED"));
            return;
        }
        row("1", 1);
        row("2", 2);
        row("a name twice, refused first", 20033);
        row("a name twice, of another kind first", 20076);
    }
    void loseNothing()
    {
        QFETCH(unsigned, seed);
        const QByteArray named = "seed " + QByteArray::number(seed);
        Engineer engineer(seed);
        SheetFixture &plant = engineer.plant();
        QUndoStack &stack = plant.session.undoStack();
        const std::string before = plant.text();
        std::vector<std::string> steps{before};
        for (int i = 0; i < editCount; ++i) {
            const QString wrong = engineer.edit();
            QVERIFY2(wrong.isEmpty(),
                     named + ", edit " + QByteArray::number(i) + ": " + wrong.toUtf8());
            QVERIFY2(stack.index() <= int(steps.size()), named + ": two steps at once");
            if (stack.index() == int(steps.size()))
                steps.push_back(plant.text());
            QVERIFY2(plant.text() == steps.back(), named + ": changed outside the history");
        }
        QVERIFY2(stack.index() > editCount / 4, named);
        for (int i = stack.index(); i-- > 0;) {
            stack.undo();
            QVERIFY2(plant.text() == steps[std::size_t(i)],
                     named + ", step " + QByteArray::number(i));
        }
        for (std::size_t i = 1; i < steps.size(); ++i) {
            stack.redo();
            QVERIFY2(plant.text() == steps[i], named + ", step " + QByteArray::number(int(i)));
        }
    }
};

QTEST_MAIN(RandomSheetsTest)
#include "tst_random_sheets.moc"
