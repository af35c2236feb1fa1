#pragma once

#include "nodes/ProjectFixture.h"
#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/engine/AlarmTracker.h"

#include <QStringList>

inline Nodes::SignalValue withQuality(Nodes::SignalValue value, Nodes::Quality quality)
{
    value.SetQuality(quality);
    return value;
}

/// An alarm of a kind with properties "key=value ..." and a clock of its own.
struct Alarm
{
    Alarm(const char *kind, const QString &properties)
        : node(dynamic_cast<Nodes::BasicAlarm *>(project.add(
              kind, project.add("memorySignal", project.root(), "Уровень"), "Тревога"))),
          tracker(settings(properties), lastOccurrence)
    {
    }
    Nodes::AlarmSettings settings(const QString &properties)
    {
        for (const QString &property : properties.split(' ', Qt::SkipEmptyParts)) {
            const QStringList parts = property.split('=');
            if (!node->SetPropertyText(parts[0].toStdString(), parts[1].toStdString()))
                qFatal("%s", qPrintable(property));
        }
        return Nodes::AlarmSettings::Of(*node);
    }
    Nodes::AlarmMoment now() const { return {1700000000000 * 1000 + time, time}; }
    Nodes::AlarmState judge(const Nodes::SignalValue &value)
    {
        tracker.Judge(value, now(), records);
        return tracker.GetState();
    }
    Nodes::AlarmState pass(int milliseconds)
    {
        time += Nodes::Timestamp(milliseconds) * 1000;
        tracker.Tick(now(), records);
        return tracker.GetState();
    }
    Nodes::Result acknowledge(unsigned long occurrence)
    {
        return tracker.Acknowledge(occurrence, "anna", "осмотр", now(), records);
    }
    void acknowledge() { (void)acknowledge(tracker.GetMemory().occurrence); }
    void shelve(int milliseconds)
    {
        tracker.Shelve(Nodes::Timestamp(milliseconds) * 1000, "anna", now(), records);
    }

    ProjectFixture project;
    Nodes::BasicAlarm *node;
    unsigned long lastOccurrence = 0;
    Nodes::Timestamp time = 5000000;
    Nodes::AlarmTracker::Records records;
    Nodes::AlarmTracker tracker;
};
