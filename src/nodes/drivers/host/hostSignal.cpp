#include "nodes/drivers/host/hostSignal.h"

#include "nodes/drivers/host/hostDriver.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo hostSignal::Kind()
{
    return KindBuilder::For<hostSignal>("hostSignal", "Host signal", "Сигнал компьютера")
        .Inherit<BasicSignal>()
        .Property<&hostSignal::m_metric>(Prop::Metric, "Metric", "Показатель")
        .Range(0, int(HostMetric::Last))
        .Choice(int(HostMetric::None), "none", "Не выбран")
        .Choice(int(HostMetric::CpuTotal), "cpu.total", "Загрузка процессора, %")
        .Choice(int(HostMetric::CpuUser), "cpu.user", "Процессор, программы, %")
        .Choice(int(HostMetric::CpuIoWait), "cpu.iowait", "Процессор, ожидание дисков, %")
        .Choice(int(HostMetric::Load1), "load1", "Очередь, 1 мин")
        .Choice(int(HostMetric::Load5), "load5", "Очередь, 5 мин")
        .Choice(int(HostMetric::Load15), "load15", "Очередь, 15 мин")
        .Choice(int(HostMetric::MemoryUsed), "memory.used", "Занято памяти, %")
        .Choice(int(HostMetric::MemoryUsedBytes), "memory.usedBytes", "Занято памяти, байт")
        .Choice(int(HostMetric::MemoryAvailable), "memory.available", "Доступно памяти, байт")
        .Choice(int(HostMetric::SwapUsed), "swap.used", "Занято подкачки, %")
        .Choice(int(HostMetric::DiskUsed), "disk.used", "Занято диска, %")
        .Choice(int(HostMetric::DiskRead), "disk.read", "Чтение диска, байт/с")
        .Choice(int(HostMetric::DiskWrite), "disk.write", "Запись диска, байт/с")
        .Choice(int(HostMetric::NetReceived), "net.rx", "Приём сети, байт/с")
        .Choice(int(HostMetric::NetSent), "net.tx", "Передача сети, байт/с")
        .Choice(int(HostMetric::Uptime), "uptime", "Время работы, с")
        .Choice(int(HostMetric::ProcessCount), "process.count", "Число процессов")
        .Choice(int(HostMetric::ProcessRss), "process.rss", "Память станции, байт")
        .Choice(int(HostMetric::ProcessCpu), "process.cpu", "Процессор станции, %")
        .Choice(int(HostMetric::HostName), "host.name", "Имя компьютера")
        .Choice(int(HostMetric::OsRelease), "os.release", "Операционная система")
        .Choice(int(HostMetric::JournalWaiting), "journal.waiting", "Журнал, записей в памяти")
        .Choice(int(HostMetric::JournalAside), "journal.aside", "Журнал, записей отложено")
        .Choice(int(HostMetric::JournalLost), "journal.lost", "Журнал, записей потеряно")
        .Choice(int(HostMetric::JournalTrouble), "journal.trouble", "Журнал не пишется, с")
        .Choice(int(HostMetric::AlarmsUnkept), "alarms.unkept", "Тревог не сохранено")
        .Choice(int(HostMetric::ArchiveAside), "archive.aside", "Архив, групп значений отложено")
        .Choice(int(HostMetric::ArchiveLost), "archive.lost", "Архив, значений потеряно")
        .Choice(int(HostMetric::ArchiveTrouble), "archive.trouble", "Архив не пишется, с")
        .Property<&hostSignal::m_target>(Prop::Target, "Path, device or interface",
                                         "Путь, устройство или интерфейс")
        .Property<&hostSignal::m_scale>(Prop::Scale, "Scale", "Множитель");
}

void hostSignal::Validate(ValidationResults &results) const
{
    BasicSignal::Validate(results);
    BasicDriver::ValidatePlace<hostDriver>(*this, "драйвер «Этот компьютер»", results);
    if (GetMetric() == HostMetric::None)
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "metric"),
                    GetName() + ": выберите показатель");
}

} // namespace Nodes
