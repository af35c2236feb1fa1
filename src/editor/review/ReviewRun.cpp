#include "editor/review/ReviewRun.h"

#include "editor/review/ReviewRules.h"
#include "editor/review/ReviewScreen.h"
#include "editor/review/ScreenClicks.h"

#include <algorithm>

namespace Editor {

namespace {

constexpr int pause = 10; // ms between steps, for input and painting

void checkClicks(const Nodes::ConfigNode &screen, const ScreenClicks &clicks,
                 ReviewFindings &findings)
{
    const int count = clicks.to(screen);
    if (!clicks.hasFrames() || (count >= 0 && count <= ScreenClicks::Most))
        return;
    findings.append({count < 0 ? ReviewFinding::Hint : ReviewFinding::Warning,
                     Nodes::NodeLink(&screen),
                     count < 0 ? QStringLiteral("Ни кнопка, ни меню сюда не ведут.")
                               : QStringLiteral("От начала сюда %1 нажатий, нужно не больше %2.")
                                     .arg(count)
                                     .arg(ScreenClicks::Most),
                     QStringLiteral("Добавьте переход с обзорного экрана или из главного меню.")});
}

} // namespace

ReviewRun::ReviewRun(QObject *parent) : QObject(parent)
{
    m_timer.setInterval(pause);
    connect(&m_timer, &QTimer::timeout, this, &ReviewRun::reviewNext);
}

ReviewRun::~ReviewRun() = default;

void ReviewRun::start(const Nodes::NodeLinks &screens, const Nodes::ConfigNode &root)
{
    m_screens = screens;
    m_next = 0;
    m_times.clear();
    m_clicks = std::make_unique<ScreenClicks>(root);
    m_timer.start();
}

void ReviewRun::add(const Nodes::NodeLinks &screens, const Nodes::ConfigNode &root)
{
    if (!isRunning())
        return start(screens, root);
    m_clicks = std::make_unique<ScreenClicks>(root);
    for (const Nodes::NodeLink &screen : screens) {
        const auto waiting = m_screens.begin() + std::ptrdiff_t(m_next);
        if (std::find(waiting, m_screens.end(), screen) == m_screens.end())
            m_screens.push_back(screen);
    }
}

void ReviewRun::stop()
{
    if (!isRunning())
        return;
    m_timer.stop();
    emit finished();
}

ReviewFindings ReviewRun::check(const Nodes::ConfigNode &screen, const ScreenClicks &clicks)
{
    ReviewFindings findings;
    const ReviewScreen facts(screen);
    for (const ReviewRule &rule : ReviewRules()) {
        const int before = findings.size();
        rule.check(facts, findings);
        for (int i = before; i < findings.size(); ++i)
            findings[i].rule = rule.id;
    }
    checkClicks(screen, clicks, findings);
    return findings;
}

void ReviewRun::reviewNext()
{
    constexpr int builds = 2; // the first reads files and fonts, as later calls do not
    if (m_next < m_screens.size()) {
        const Nodes::NodeLink link = m_screens[m_next];
        Nodes::ConfigNode *screen = link.GetNode(); // deleted ones are left out
        if (screen && m_times.size() < builds) {
            m_times.append(CallUpMeter::measure(*screen));
            return;
        }
        if (screen) {
            const auto best = std::min_element(
                m_times.begin(), m_times.end(),
                [](const auto &one, const auto &other) { return one.live < other.live; });
            emit found(link, CallUpMeter::tell(*screen, *best) + check(*screen, *m_clicks));
        }
        m_times.clear();
        ++m_next;
        emit progressed(int(m_next), int(m_screens.size()));
    }
    if (m_next >= m_screens.size())
        stop();
}

} // namespace Editor
