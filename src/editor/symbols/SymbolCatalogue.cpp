#include "editor/symbols/SymbolCatalogue.h"

#include "widgets/elements/symbols/SymbolStore.h"

#include "nodes/model/links/ResourceLink.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace Editor {

namespace {

struct Row
{
    const char *file;
    const char *title;
};

const char *const machines = "Машины";
const char *const valves = "Арматура";
const char *const vessels = "Ёмкости";
const char *const heat = "Тепло";
const char *const pipes = "Трубопроводы";
const char *const sensors = "Датчики";
const char *const electric = "Электрика";

struct Group
{
    const char *title;
    std::initializer_list<Row> rows;
};

const Group groups[] = {
    {machines,
     {{"pump", "Насос центробежный"},
      {"pump-gear", "Насос объёмный"},
      {"pump-submersible", "Насос погружной"},
      {"fan", "Вентилятор"},
      {"motor", "Двигатель"},
      {"compressor", "Компрессор"},
      {"mixer", "Мешалка"},
      {"conveyor", "Конвейер"},
      {"screw-conveyor", "Шнек"},
      {"elevator", "Нория"},
      {"crusher", "Дробилка"},
      {"turbine", "Турбина"}}},
    {valves,
     {{"valve", "Задвижка с приводом"},
      {"valve-manual", "Задвижка ручная"},
      {"valve-control", "Клапан регулирующий"},
      {"valve-solenoid", "Клапан электромагнитный"},
      {"valve-safety", "Клапан предохранительный"},
      {"valve-three-way", "Клапан трёхходовой"},
      {"valve-check", "Клапан обратный"},
      {"valve-ball", "Кран шаровой"},
      {"valve-butterfly", "Затвор дисковый"},
      {"gate", "Шибер"},
      {"damper", "Заслонка"}}},
    {vessels,
     {{"tank-vertical", "Бак вертикальный"},
      {"tank-horizontal", "Бак горизонтальный"},
      {"tank-open", "Бак открытый"},
      {"tank-sphere", "Резервуар шаровой"},
      {"bunker", "Бункер"},
      {"reactor", "Реактор с мешалкой"},
      {"column", "Колонна"},
      {"level-column", "Колонка уровня"}}},
    {heat,
     {{"boiler", "Котёл водогрейный"},
      {"boiler-steam", "Котёл паровой"},
      {"burner", "Горелка"},
      {"heat-exchanger", "Теплообменник"},
      {"heat-exchanger-plate", "Теплообменник пластинчатый"},
      {"heater", "Электронагреватель"},
      {"cooler", "Охладитель"},
      {"cooling-tower", "Градирня"},
      {"radiator", "Потребитель тепла"},
      {"filter", "Фильтр"},
      {"strainer", "Грязевик"},
      {"cyclone", "Циклон"},
      {"chimney", "Дымовая труба"}}},
    {pipes,
     {{"pipe-straight", "Труба прямая"},
      {"pipe-elbow", "Колено"},
      {"pipe-tee", "Тройник"},
      {"pipe-cross", "Крестовина"},
      {"pipe-reducer", "Переход"},
      {"pipe-flange", "Фланец"},
      {"arrow", "Стрелка потока"},
      {"arrow-double", "Стрелка в обе стороны"}}},
    {sensors,
     {{"sensor-temperature", "Датчик температуры (T)"},
      {"sensor-pressure", "Датчик давления (P)"},
      {"sensor-flow", "Датчик расхода (F)"},
      {"sensor-level", "Датчик уровня (L)"},
      {"sensor-quality", "Анализатор (Q)"},
      {"sensor-speed", "Датчик скорости (S)"},
      {"sensor-vibration", "Датчик вибрации (V)"},
      {"lamp", "Лампа сигнальная"}}},
    {electric,
     {{"generator", "Генератор"},
      {"transformer", "Трансформатор"},
      {"breaker", "Выключатель"},
      {"frequency-drive", "Преобразователь частоты"},
      {"battery", "Источник питания"}}},
};

/// Null for a picture that may not be a symbol.
std::shared_ptr<Widgets::Symbol> usable(const QString &source)
{
    auto symbol =
        Widgets::SymbolStore::getInstance().get(Nodes::ResourceLink(source.toStdString()));
    return symbol && symbol->refusal().isEmpty() ? symbol : nullptr;
}

QVector<SymbolRow> makeBuiltIn()
{
    QVector<SymbolRow> made;
    for (const Group &group : groups) {
        for (const Row &row : group.rows) {
            const QString file = QString::fromUtf8(row.file);
            const QString source = ":/symbols/" + file + ".svg";
            const auto symbol = usable(source);
            made.append({source, QString::fromUtf8(row.title), QString::fromUtf8(group.title),
                         symbol ? symbol->size().toSize() : QSize(64, 64),
                         file != QLatin1String("pipe-straight")});
        }
    }
    return made;
}

} // namespace

Widgets::DroppedProperties::Texts SymbolRow::properties() const
{
    return {{QStringLiteral("name"), title},
            {QStringLiteral("source"), source},
            {QStringLiteral("width"), QString::number(size.width())},
            {QStringLiteral("height"), QString::number(size.height())},
            {QStringLiteral("keepAspect"), keepsAspect ? "true" : "false"}};
}

const QVector<SymbolRow> &SymbolCatalogue::builtIn()
{
    static const QVector<SymbolRow> rows = makeBuiltIn();
    return rows;
}

QString SymbolCatalogue::ownGroup()
{
    return QStringLiteral("Файлы проекта");
}

QVector<SymbolRow> SymbolCatalogue::own(const QString &directory)
{
    QVector<SymbolRow> rows;
    if (directory.isEmpty())
        return rows;
    const QDir base(directory);
    QDirIterator files(directory, {QStringLiteral("*.svg")}, QDir::Files | QDir::Readable,
                       QDirIterator::Subdirectories);
    while (files.hasNext() && rows.size() < MaximumOwn) {
        const QString path = base.relativeFilePath(files.next());
        if (const auto symbol = usable(path))
            rows.append({path, files.fileInfo().completeBaseName(), ownGroup(),
                         symbol->size().toSize().boundedTo({400, 400}), true});
    }
    std::sort(rows.begin(), rows.end(),
              [](const SymbolRow &a, const SymbolRow &b) { return a.source < b.source; });
    return rows;
}

} // namespace Editor
