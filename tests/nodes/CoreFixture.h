#pragma once

#include "nodes/ProjectFixture.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/system/systemCore.h"

#include <QTemporaryDir>

/// A project run by a core that keeps its files in a directory. Made again it is the same project,
/// unless it is given another UUID.
struct CoreFixture : ProjectFixture
{
    explicit CoreFixture(const QTemporaryDir &directory, const char *uuid = "fixture")
    {
        owned->SetUuid(uuid);
        core.AdoptProject(std::move(owned), directory.filePath("project.xml").toStdString());
    }
    /// What the journal holds, all entries awaited.
    std::vector<Nodes::BasicEvent> journalled(const Nodes::JournalQuery &query)
    {
        std::vector<Nodes::BasicEvent> events;
        Nodes::Result result = core.GetJournal().Flush();
        if (result)
            result = core.GetJournal().Query(query, events);
        return result ? events : throw std::logic_error(result.ToString());
    }
    std::vector<Nodes::BasicEvent> journalledText(const char *text)
    {
        Nodes::JournalQuery query;
        query.text = text;
        return journalled(query);
    }

    Nodes::systemCore core;
};
