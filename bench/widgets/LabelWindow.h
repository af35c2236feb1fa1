#pragma once

#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QThread>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

/// A project of `count` signals and a window with one label for each, at run time.
struct LabelProject
{
    explicit LabelProject(int count)
    {
        core.SetWorkMode(Nodes::WorkModeRuntime);
        manager = std::make_unique<Widgets::WindowManager>(&core);
        if (!project.SetRoot(project.CreateDetached(kind("project"))))
            throw std::logic_error("no root");
        Nodes::NodesCollection::SetCurrent(&project);
        window = static_cast<Nodes::BasicWindow *>(add("window", project.GetRoot()));
        set(*window, "width", "1600");
        set(*window, "height", "1000");
        Nodes::ConfigNode *folder = add("folder", project.GetRoot());
        for (int i = 0; i < count; ++i)
            addLabel(*folder, i);
    }

    static const Nodes::KindInfo &kind(const char *key)
    {
        return *Nodes::KindTable::Instance().FindByKey(key);
    }
    Nodes::ConfigNode *add(const char *key, Nodes::ConfigNode *parent)
    {
        auto node = project.CreateDetached(kind(key));
        node->SetName(key + std::to_string(node->GetId())); // looking for a free name takes long
        Nodes::ConfigNode *added = node.get();
        return parent->AddNode(node) ? added : throw std::logic_error(key);
    }
    static void set(Nodes::BasicNode &node, const char *key, const std::string &text)
    {
        if (!node.SetPropertyText(key, text))
            throw std::logic_error(std::string(key) + " = " + text);
    }
    void addLabel(Nodes::ConfigNode &folder, int i)
    {
        auto *signal = static_cast<Nodes::BasicSignal *>(add("memorySignal", &folder));
        cells.push_back(signal->GetCell());
        cells.back()->Publish(0.0);
        Nodes::ConfigNode *label = add("label", window);
        set(*label, "signal", std::to_string(signal->GetId()));
        set(*label, "x", std::to_string(i % 25 * 64));
        set(*label, "y", std::to_string(i / 25 % 40 * 25));
        set(*label, "width", "62");
        set(*label, "height", "23");
        set(*label, "align", "right");
    }
    /// Publishes a new number to the first `count` signals.
    void publish(int count)
    {
        ++round;
        for (int i = 0; i < count; ++i)
            cells[std::size_t(i)]->Publish((i * 7 + round * 13) % 10000 / 10.0);
    }

    Nodes::systemCore core;
    std::unique_ptr<Widgets::WindowManager> manager;
    Nodes::NodesCollection project;
    Nodes::BasicWindow *window = nullptr;
    std::vector<std::shared_ptr<Nodes::ValueCell>> cells;
    int round = 0;
};

/// Without a screen, silent, and not over when a window is.
class BenchApplication : public QApplication
{
public:
    BenchApplication(int &argc, char **argv) : QApplication(prepared(argc), argv)
    {
        setQuitOnLastWindowClosed(false);
    }

private:
    static int &prepared(int &argc)
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        if (!qEnvironmentVariableIsSet("QT_LOGGING_RULES"))
            qputenv("QT_LOGGING_RULES", "station.*=false;qt.qpa.*=false");
        return argc;
    }
};

/// Counts the paintings of a viewport.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    /// Runs the event loop until one more painting is done.
    void await()
    {
        const int before = paints;
        while (paints == before)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::processEvents();
    }
    int paints = 0;
};

/// Lets everything pending happen, the pause between two rounds of values included.
inline void settle()
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 20) {
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
}
