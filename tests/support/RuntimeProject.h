#pragma once

#include "widgets/windows/WindowManager.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <QStringList>
#include <QStyle>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(Nodes::Quality)

/// A project from XML text, loaded in a core that is not started, with a window manager on it and a
/// data directory of its own.
class RuntimeProject
{
public:
    /// Nodes that make rights count: users are known, and none is logged in.
    static constexpr const char *NobodyLoggedIn =
        R"(<station id="89" name="St"><authentication id="90" name="A"/></station>)"
        R"(<user id="91" name="U"/>)";

    /// `nodes` are elements below the project's root; ids from 10 on are free.
    explicit RuntimeProject(const char *nodes, Nodes::enWorkMode mode = Nodes::WorkModeRuntime)
    {
        std::unique_ptr<Nodes::NodesCollection> project;
        Nodes::ProjectReader reader;
        const Nodes::Result read = reader.ReadBuffer(
            std::string(R"(<project format="1" id="1" name="P">)") + nodes + "</project>", "test",
            project);
        if (!read)
            qFatal("%s", read.ToString().c_str());
        core.AdoptProject(std::move(project), "test.xml");
        core.SetDataDirectory(data.path().toStdString());
        core.SetWorkMode(mode);
        manager = std::make_unique<Widgets::WindowManager>(&core);
    }

    template <class Node = Nodes::ConfigNode> Node *node(unsigned long id) const
    {
        return dynamic_cast<Node *>(core.GetNodesCollection()->FindNode(id));
    }
    Nodes::SignalValue value(unsigned long signal) const
    {
        return node<Nodes::BasicSignal>(signal)->GetValue();
    }
    void publish(unsigned long signal, Nodes::SignalValue value,
                 Nodes::Quality quality = Nodes::Quality::Good) const
    {
        value.SetQuality(quality);
        node<Nodes::BasicSignal>(signal)->GetCell()->Publish(value);
    }
    void set(unsigned long id, const char *key, const QString &text) const
    {
        if (!node(id)->SetPropertyText(key, text.toStdString()))
            qFatal("%s = %s", key, qPrintable(text));
    }
    void push(unsigned long action, int display = 0) const
    {
        auto *configured = node<Nodes::BasicAction>(action);
        configured->setCurrentDisplay(display);
        manager->PushAction(configured);
    }
    /// Pushes an action and waits until it has run, and all that were pushed before.
    void run(unsigned long action, int display = 0) const
    {
        push(action, display);
        QTRY_VERIFY(!manager->hasActionBelow(*core.GetNodesCollection()->GetRoot()));
    }
    int openWindows(unsigned long id) const
    {
        const auto &windows = manager->windows();
        return int(std::count_if(windows.begin(), windows.end(),
                                 [id](const auto &link) { return link.id == id; }));
    }
    /// Entries of the journal, which has to be open, whose "source: text" contains that.
    int journalled(const QString &text) const
    {
        std::vector<Nodes::BasicEvent> events;
        (void)core.GetJournal().Flush();
        (void)core.GetJournal().Query({}, events);
        return int(std::count_if(events.begin(), events.end(), [&text](const auto &event) {
            return QString::fromStdString(event.source + ": " + event.text).contains(text);
        }));
    }
    /// Notes every value the signals get, as their names.
    void record(std::initializer_list<unsigned long> signalIds)
    {
        for (const unsigned long id : signalIds) {
            auto *signal = node<Nodes::BasicSignal>(id);
            const QString name = QString::fromStdString(signal->GetName());
            m_connections.emplace_back(signal->GetCell()->Subscribe(
                [this, name](const Nodes::SignalValue &) { recorded << name; }));
        }
    }
    /// What was recorded since the last time, once every action pushed until now has run.
    QString ran()
    {
        const Nodes::ConfigNode &root = *core.GetNodesCollection()->GetRoot();
        if (!QTest::qWaitFor([&] { return !manager->hasActionBelow(root); }))
            return "an action does not end";
        return std::exchange(recorded, {}).join(' ');
    }

    QTemporaryDir data; ///< of the station: no test meets what another one left
    Nodes::systemCore core;
    std::unique_ptr<Widgets::WindowManager> manager;
    QStringList recorded;

private:
    std::vector<Nodes::ScopedConnection> m_connections;
};
