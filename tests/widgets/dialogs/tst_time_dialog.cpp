// The dialog for a length of time.
#include "support/Rows.h"

#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/TimeDialog.h"
#include "widgets/dialogs/VirtualNumpad.h"

#include <QComboBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>

using Axis = Nodes::widgetChartAxis;
using Widgets::TimeDialog;

class TestTimeDialog : public QObject
{
    Q_OBJECT

private slots:
    void givesWhatWasSet_data()
    {
        const Rows<double, int, int, int> row("length", "unit", "count", "given");
        row("minutes", 10, 2, 10, 2);
        row("days", 366, 4, 366, 4);
        row("part of a unit", 2.6, 3, 3, 3);
        row("nothing", 0, 2, 1, 2);
        row("less than nothing", -5, 2, 1, 2);
        row("no number", qQNaN(), 2, 1, 2);
        row("unknown unit", 5, 9, 5, 1);
    }
    void givesWhatWasSet()
    {
        QFETCH(double, length);
        QFETCH(int, unit);
        const TimeDialog dialog(length, Axis::enRangeUnit(unit));
        QTEST(dialog.getTime().count, "count");
        QTEST(int(dialog.getTime().unit), "given");
    }

    void limit()
    {
        TimeDialog dialog(30, Axis::RangeDays);
        dialog.setMaxRange(36, Axis::RangeHours);
        QCOMPARE(dialog.getTime().count, 1);
        dialog.setMaxRange(90, Axis::RangeMinutes); // days do not fit any more
        QCOMPARE(dialog.getTime().unit, Axis::RangeHours);
        auto *unit = dialog.findChild<QComboBox *>("unit");
        auto *count = dialog.findChild<QSpinBox *>("count");
        QCOMPARE(unit->itemText(0), QString("Секунды"));
        QCOMPARE(unit->itemText(1), QString("Минуты"));
        unit->setCurrentIndex(1);
        count->setValue(1000);
        QCOMPARE(dialog.getTime().count, 90);
        dialog.findChild<QPushButton *>("more")->click();
        QCOMPARE(dialog.getTime().count, 90);
        dialog.findChild<QPushButton *>("less")->click();
        QCOMPARE(dialog.getTime().count, 89);
    }

    void numpad()
    {
        const Widgets::OwnedDialog<TimeDialog> dialog;
        dialog->setTime(5, Axis::RangeMinutes);
        dialog->setMaxRange(1, Axis::RangeHours);
        dialog->show();
        const QString folder = qEnvironmentVariable("STATION_TEST_PICTURES");
        if (!folder.isEmpty())
            QVERIFY(dialog->grab().save(folder + "/time.png"));
        QTimer::singleShot(0, dialog->window(), [] {
            auto *pad = qobject_cast<Widgets::VirtualNumpad *>(qApp->activeModalWidget());
            QVERIFY(pad);
            pad->setText("99"); // beyond the limit: cannot be entered
            QVERIFY(!pad->findChild<QPushButton *>("keyEnter")->isEnabled());
            pad->setText("42");
            QTimer::singleShot(0, pad, &QDialog::accept);
        });
        dialog->findChild<QPushButton *>("numpad")->click();
        QCOMPARE(dialog->getTime().count, 42);
    }
};

QTEST_MAIN(TestTimeDialog)
#include "tst_time_dialog.moc"
