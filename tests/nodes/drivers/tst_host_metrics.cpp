#include "nodes/ProjectFixture.h"
#include "nodes/drivers/host/DiskProbe.h"
#include "nodes/drivers/host/HostMetrics.h"
#include "nodes/signals/BasicSignal.h"
#include "support/Rows.h"

#include <QtTest>

#include <cmath>
#include <future>

Q_DECLARE_METATYPE(Nodes::HostMetric)

using namespace Nodes;

namespace {

/// What the kernel of one machine said, two seconds apart.
HostSnapshot captured()
{
    HostSnapshot s;
    s.steady = 5000000;
    s.stat = "cpu  1000 100 400 8000 300 50 50 100 0 0\ncpu0 1 2 3 4 5 6 7 8 0 0\nintr 12 0\n";
    s.loadavg = "0.52 1.25 2.00 3/812 4711\n";
    s.meminfo = "MemTotal:        8000000 kB\nMemFree:          100000 kB\n"
                "MemAvailable:    2000000 kB\nSwapTotal:       1000 kB\nSwapFree: 750 kB\n";
    s.diskstats = "   8       0 sda 10 0 2000 5 20 0 4000 9 0 0 0 0 0 0 0\n"
                  "   8       1 sda1 10 0 1 5 20 0 1 9 0 0 0 0 0 0 0\n";
    s.netdev = "Inter-|   Receive                |  Transmit\n"
               " face |bytes    packets errs drop fifo frame compressed multicast|bytes\n"
               "    lo: 9000 1 0 0 0 0 0 0 9000 1 0 0 0 0 0 0\n"
               "  eth0:1000 1 0 0 0 0 0 0 3000 1 0 0 0 0 0 0\n"
               " wlan0: 500 1 0 0 0 0 0 0 70 1 0 0 0 0 0 0\n";
    s.uptime = "3661.25 7000.00\n";
    s.selfStat = "4711 (my (odd) name) S 1 4711 4711 0 -1 4194304 100 0 0 0 120 80 0 0 20 0 3 0 "
                 "12345 1000000 2500 18446744073709551615 0 0\n";
    s.osRelease = "NAME=\"Some\"\nPRETTY_NAME=\"Some Linux 12\"\n";
    s.hostName = "station-1";
    s.processCount = 123;
    s.journal.waiting = 3;
    s.journal.aside = 40;
    s.journal.lost = 5;
    s.journal.troubledFor = 30000000;
    s.alarmsUnkept = 6;
    s.archive.packets.aside = 7;
    s.archive.packets.troubledFor = 8000000;
    s.archive.lost = 9;
    return s;
}

HostSnapshot twoSecondsLater()
{
    HostSnapshot s = captured();
    s.steady += 2000000;
    s.stat = "cpu  1060 100 420 8060 340 60 60 100 0 0\n"; // 200 ticks: 60 user, 60 idle, 40 wait
    s.diskstats = "   8       0 sda 10 0 2008 5 20 0 4080 9 0 0 0 0 0 0 0\n";
    s.netdev = "  eth0:5000 1 0 0 0 0 0 0 3200 1 0 0 0 0 0 0\n"
               " wlan0: 700 1 0 0 0 0 0 0 90 1 0 0 0 0 0 0\n"
               "    lo: 99000 1 0 0 0 0 0 0 99000 1 0 0 0 0 0 0\n";
    s.selfStat = "4711 (my (odd) name) S 1 4711 4711 0 -1 4194304 100 0 0 0 150 150 0 0 20 0 3 0 "
                 "12345 1000000 2500 18446744073709551615 0 0\n";
    return s;
}

} // namespace

class TestHostMetrics : public QObject
{
    Q_OBJECT

private slots:
    void measures_data()
    {
        // damage: takes the place of every text
        const Rows<HostMetric, std::string, QString, int, std::string> row(
            "metric", "target", "damage", "error", "value");
        const auto good = [&row](const char *name, HostMetric metric, const char *target,
                                 const char *value) {
            row(name, metric, target, QString(), Result::Success, value);
        };
        good("cpu total", HostMetric::CpuTotal, "", "50");
        good("cpu user", HostMetric::CpuUser, "", "30");
        good("cpu waiting", HostMetric::CpuIoWait, "", "20");
        good("load 1", HostMetric::Load1, "", "0.52");
        good("memory used", HostMetric::MemoryUsed, "", "75");
        good("memory used, bytes", HostMetric::MemoryUsedBytes, "", "6.144e+09");
        good("swap", HostMetric::SwapUsed, "", "25");
        good("disk read", HostMetric::DiskRead, "sda", "2048");
        good("disk write", HostMetric::DiskWrite, "sda", "20480");
        good("one interface", HostMetric::NetReceived, "eth0", "2000");
        good("all but the loopback", HostMetric::NetReceived, "", "2100");
        good("sent", HostMetric::NetSent, "wlan0", "10");
        good("uptime", HostMetric::Uptime, "", "3661.25");
        good("processes", HostMetric::ProcessCount, "", "123");
        good("own memory", HostMetric::ProcessRss, "", "10240000");
        good("own processor time", HostMetric::ProcessCpu, "", "50");
        good("host name", HostMetric::HostName, "", "station-1");
        good("system", HostMetric::OsRelease, "", "Some Linux 12");

        good("journal in memory", HostMetric::JournalWaiting, "", "3");
        good("journal aside", HostMetric::JournalAside, "", "40");
        good("journal lost", HostMetric::JournalLost, "", "5");
        good("journal not written", HostMetric::JournalTrouble, "", "30");
        good("alarms not kept", HostMetric::AlarmsUnkept, "", "6");
        good("archive aside", HostMetric::ArchiveAside, "", "7");
        good("archive not written", HostMetric::ArchiveTrouble, "", "8");
        good("archive lost", HostMetric::ArchiveLost, "", "9");

        const auto parse = Result::ParseError;
        row("empty stat", HostMetric::CpuTotal, "", "", parse, "");
        row("short stat", HostMetric::CpuTotal, "", "cpu 1 2 3", parse, "");
        row("negative counter", HostMetric::CpuUser, "", "cpu -1 2 3 4 5 6 7 8", parse, "");
        row("load not a number", HostMetric::Load1, "", "nan 1 2", parse, "");
        row("memory without total", HostMetric::MemoryUsed, "", "MemAvailable: 5 kB", parse, "");
        row("more available than there is", HostMetric::MemoryUsed, "",
            "MemTotal: 5 kB\nMemAvailable: 6 kB", parse, "");
        row("disk cut off", HostMetric::DiskRead, "sda", "8 0 sda 1 2 3", Result::NotFound, "");
        row("device is gone", HostMetric::DiskRead, "sdz", QString(), Result::NotFound, "");
        row("a part of a name is no name", HostMetric::DiskRead, "sd", QString(), Result::NotFound,
            "");
        row("interface is gone", HostMetric::NetSent, "eth7", QString(), Result::NotFound, "");
        row("uptime", HostMetric::Uptime, "", "soon", parse, "");
        row("process cut off", HostMetric::ProcessCpu, "", "4711 (a) S 1 2", parse, "");
        row("system without a name", HostMetric::OsRelease, "", "PRETTY_NAME=\"\"", parse, "");
        row("no metric", HostMetric::None, "", QString(), Result::InvalidArgument, "");
        row("unknown metric", HostMetric(99), "", QString(), Result::InvalidArgument, "");
    }

    void measures()
    {
        QFETCH(HostMetric, metric);
        QFETCH(std::string, target);
        QFETCH(QString, damage);
        HostSnapshot now = twoSecondsLater();
        if (!damage.isNull()) {
            const std::string text = damage.toStdString();
            now.stat = now.loadavg = now.meminfo = now.diskstats = now.netdev = now.uptime = text;
            now.selfStat = now.osRelease = text;
        }
        const HostSnapshot before = captured();
        const SignalValue value = HostMetrics::Measure(metric, target, now, &before);
        QTEST(int(value.GetError().GetType()), "error");
        if (value.IsGood())
            QTEST(value.ToString(), "value");
        else
            QVERIFY(!value.GetError().GetDetail().empty());
    }

    void ratesNeedTwoReadings()
    {
        const HostSnapshot first = captured();
        const HostSnapshot later = twoSecondsLater();
        for (const HostMetric metric :
             {HostMetric::CpuTotal, HostMetric::NetSent, HostMetric::ProcessCpu}) {
            QVERIFY(HostMetrics::Measure(metric, "", first, nullptr).IsEmpty());
            QVERIFY(HostMetrics::Measure(metric, "", first, &first).IsEmpty() ||
                    metric == HostMetric::CpuTotal);
            // Counters that run backwards were reset: no figure rather than a negative one.
            QVERIFY(HostMetrics::Measure(metric, "", first, &later).IsEmpty());
        }
    }

    void findsMount()
    {
        const char *mounts = "/dev/sda1 / ext4 rw 0 0\nsrv:/a /mnt/a nfs rw 0 0\n"
                             "srv:/b /mnt/a\\040b nfs rw 0 0\n";
        QCOMPARE(HostMetrics::FindMount(mounts, "/mnt/a/deep"), std::string("/mnt/a"));
        QCOMPARE(HostMetrics::FindMount(mounts, "/mnt/a b"), std::string("/mnt/a b"));
        QCOMPARE(HostMetrics::FindMount(mounts, "/mnt/ab"), std::string("/"));
    }

    void hangingMount()
    {
        std::promise<void> release;
        const std::shared_future<void> released = release.get_future().share();
        std::atomic<int> asked{0};
        const auto hang = [&asked, released](const std::string &) {
            ++asked;
            released.wait();
            return SignalValue(50);
        };
        DiskProbe probe(hang, std::chrono::milliseconds(50));
        for (const char *path : {"/", "/", "/no/such/directory"})
            QCOMPARE(probe.Used(path).GetError().GetType(), Result::Timeout);
        QTRY_COMPARE(asked.load(), 1);
        release.set_value();
        QTRY_COMPARE(probe.Used("/").ToDouble(), 50.);
    }

    void realMachine()
    {
        ProjectFixture project;
        ConfigNode *driver = project.add("hostDriver", project.root(), "host", {{"period", "100"}});
        const auto add = [&](const char *metric, const char *target = "",
                             const char *type = "double", const char *scale = "1") {
            return project.add<BasicSignal>(
                "hostSignal", driver, nullptr,
                {{"metric", metric}, {"type", type}, {"target", target}, {"scale", scale}});
        };
        const std::vector<BasicSignal *> real{
            add("cpu.total"), add("load1"),          add("memory.used"), add("process.rss"),
            add("uptime"),    add("disk.used", "/"), add("process.cpu")};
        BasicSignal *name = add("host.name", "", "string");
        BasicSignal *megabytes = add("process.rss", "", "double", "0.000001");
        BasicSignal *nowhere = add("disk.used", "/no/such/place");
        BasicSignal *text = add("host.name");
        QVERIFY(driver->Start().IsSuccess());
        for (const BasicSignal *signal : real)
            QTRY_VERIFY(signal->GetValue().IsGood() && signal->GetValue().ToDouble() >= 0);
        QVERIFY(real[2]->GetValue().ToDouble() > 0 && real[2]->GetValue().ToDouble() < 100);
        QTRY_VERIFY(megabytes->GetValue().IsGood());
        const double expected = real[3]->GetValue().ToDouble() / 1e6;
        QVERIFY(std::abs(megabytes->GetValue().ToDouble() - expected) < 0.5 * expected);
        QTRY_VERIFY(!name->GetValue().ToString().empty() && name->GetValue().IsGood());
        QTRY_COMPARE(nowhere->GetValue().GetError().GetType(), Result::NotFound);
        QTRY_COMPARE(text->GetValue().GetError().GetType(), Result::WrongType);
        QVERIFY(driver->Stop().IsSuccess());
        QVERIFY(!real[0]->GetValue().IsGood());
    }
};

QTEST_GUILESS_MAIN(TestHostMetrics)
#include "tst_host_metrics.moc"
