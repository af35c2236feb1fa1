#include "widgets/events/SortKeys.h"

#include "utils/models/SortingModel.h"

#include <unordered_map>

namespace Widgets {

const QCollatorSortKey &SortKeys::of(const std::string &text)
{
    static std::unordered_map<std::string, QCollatorSortKey> keys;
    const auto known = keys.find(text);
    if (known != keys.end())
        return known->second;
    return keys.emplace(text, Utils::SortingModel::textKey(QString::fromStdString(text)))
        .first->second;
}

int SortKeys::compare(const std::string &left, const std::string &right)
{
    return left == right ? 0 : of(left).compare(of(right));
}

} // namespace Widgets
