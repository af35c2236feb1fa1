#pragma once

#include "apps/records/OpenedArchive.h"

#include <vector>

namespace Nodes {
class BasicSignal;
}

namespace Records {

struct RecordsOptions;

/// `records archive generate`.
class GenerateCommand
{
public:
    explicit GenerateCommand(const RecordsOptions &options) : m_options(options) {}

    /// True when all was done; else why not was told.
    [[nodiscard]] bool run();

private:
    [[nodiscard]] Nodes::Result chooseSignals();
    [[nodiscard]] Nodes::Result generate();

    const RecordsOptions &m_options;
    OpenedArchive m_archive;
    std::vector<const Nodes::BasicSignal *> m_signals;
};

} // namespace Records
