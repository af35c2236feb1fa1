#pragma once

#include "nodes/CoreFixture.h"
#include "nodes/ManualClock.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"

#include <QtTest>

#include <mutex>

/// A station with two alarms and a user for each right, run by a core.
struct AlarmStation : CoreFixture
{
    explicit AlarmStation(const QTemporaryDir &directory, bool hasUsers = false, int onDelay = 500,
                          const char *uuid = "fixture", bool isWaiting = false)
        : CoreFixture(directory, uuid)
    {
        set(high, {{"limit", "80"}, {"onDelay", std::to_string(onDelay)}});
        if (hasUsers)
            addUsers();
        connection = alarming->ConnectAlarm([this](const Nodes::BasicEvent &event) {
            const std::lock_guard lock(mutex);
            heard.push_back(event);
        });
        if (!isWaiting)
            QVERIFY(core.Start());
    }
    ~AlarmStation() { core.Stop(); }

    void addUsers()
    {
        users = add<Nodes::systemAuthentication>("authentication", station);
        for (const char *privilege : {"acknowledge", "shelve", "configure"}) {
            Nodes::ConfigNode *role = add("role", users);
            add("grant", role, nullptr, {{"privileges", privilege}});
            add("user", users, privilege, {{"passwordless", "true"}, {"roles", idOf(role)}});
        }
    }
    Nodes::Result logIn(const std::string &user)
    {
        return users->Authenticate(users->GetSubObject(user));
    }
    void publish(Nodes::SignalValue value, Nodes::Quality good = Nodes::Quality::Good)
    {
        value.SetQuality(good);
        tank->GetCell()->Publish(value);
    }
    std::vector<Nodes::BasicEvent> events() const
    {
        const std::lock_guard lock(mutex);
        return heard;
    }
    Nodes::AlarmState highState() const
    {
        for (const Nodes::BasicEvent &event : alarming->GetActiveAlarms()) {
            if (event.sourceNode == Nodes::NodeLink(high))
                return event.alarmState;
        }
        return Nodes::AlarmState::Normal;
    }
    void raise()
    {
        publish(90);
        ManualClock::Use().Advance(499999);
        QCOMPARE(highState(), Nodes::AlarmState::Normal);
        ManualClock::Use().Advance(1);
        QTRY_COMPARE(highState(), Nodes::AlarmState::ActiveUnacked);
    }

    Nodes::ConfigNode *station = add("station", root());
    Nodes::systemAlarming *alarming = add<Nodes::systemAlarming>("alarming", station);
    Nodes::BasicSignal *tank = add<Nodes::BasicSignal>("memorySignal", station);
    Nodes::ConfigNode *high = add("alarmLimit", tank);
    Nodes::ConfigNode *quality = add("alarmQuality", tank);
    Nodes::systemAuthentication *users = nullptr;
    mutable std::mutex mutex;
    std::vector<Nodes::BasicEvent> heard;
    Nodes::ScopedConnection connection;
};
