#include "nodes/drivers/host/TextTable.h"

namespace Nodes {

std::vector<std::string_view> SplitWords(std::string_view line)
{
    std::vector<std::string_view> words;
    for (std::size_t begin = line.find_first_not_of(" \t"); begin != std::string_view::npos;) {
        const std::size_t end = line.find_first_of(" \t", begin);
        words.push_back(line.substr(begin, end - begin));
        begin = end == std::string_view::npos ? end : line.find_first_not_of(" \t", end);
    }
    return words;
}

} // namespace Nodes
