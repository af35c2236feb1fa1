#include "widgets/eventlist/EventLoader.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Widgets {

namespace {

unsigned nextView = 1;

} // namespace

EventLoader::EventLoader(Nodes::widgetEventList *node, QObject *parent)
    : QObject(parent),
      m_node(node),
      m_view(nextView++),
      m_pages([this](std::vector<Page> pages) { onPages(std::move(pages)); }),
      m_live([this](std::vector<Nodes::EventInfo> events) { onStored(std::move(events)); })
{
    if (!node)
        return;
    m_answers = node->ConnectHistory([inlet = m_pages.inlet(), view = m_view](const Page &page) {
        if (page.view == view)
            inlet(page);
    });
    m_stores =
        node->ConnectStored([inlet = m_live.inlet()](const std::vector<Nodes::EventInfo> &events) {
            for (const Nodes::EventInfo &info : events)
                inlet(info);
        });
}

EventLoader::~EventLoader()
{
    if (m_node)
        m_node->CancelHistory(m_view);
}

Nodes::Result EventLoader::ask(unsigned long long from, unsigned long long to,
                               const Nodes::EventChoice &choice)
{
    if (!m_node)
        return Nodes::Result(Nodes::Result::NotFound);
    const Nodes::Result result = m_node->GetHistory(from, to, m_view, choice);
    if (!result)
        return result;
    m_request = m_node->GetRequest(m_view);
    m_isAsking = true;
    m_hasBegun = false;
    m_seen.clear();
    m_early.clear();
    return result;
}

void EventLoader::cancel()
{
    m_isAsking = false;
    if (m_node)
        m_node->CancelHistory(m_view);
}

void EventLoader::onPages(std::vector<Page> pages)
{
    for (Page &page : pages) {
        if (m_isAsking && page.request == m_request)
            onPage(page);
    }
}

void EventLoader::onPage(Page &page)
{
    Nodes::JournalPage &read = page.journal;
    m_hasBegun = true;
    if (read.isLast)
        m_isAsking = false;
    const unsigned request = m_request;
    std::vector<Nodes::EventInfo> events = unseen(std::move(read.events));
    if (!read.isFirst)
        emit continued(std::move(events));
    else if (read.result)
        emit begun(std::move(events));
    if (request == m_request && !m_early.empty())
        onStored(std::exchange(m_early, {}));
    if (request != m_request)
        return; // something else was asked for meanwhile
    if (read.isLast)
        emit ended(read.result, read.isCut);
    else if (m_node)
        m_node->ContinueHistory(m_view);
}

void EventLoader::onStored(std::vector<Nodes::EventInfo> events)
{
    if (m_isAsking && !m_hasBegun) {
        std::move(events.begin(), events.end(), std::back_inserter(m_early));
        return;
    }
    events = unseen(std::move(events));
    if (!events.empty())
        emit stored(std::move(events));
}

std::vector<Nodes::EventInfo> EventLoader::unseen(std::vector<Nodes::EventInfo> events)
{
    events.erase(std::remove_if(events.begin(), events.end(),
                                [this](const Nodes::EventInfo &info) {
                                    return !m_seen.add(info.GetEvent().id);
                                }),
                 events.end());
    return events;
}

} // namespace Widgets
