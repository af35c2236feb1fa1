#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Widgets {

/// Texts of a great many events, each kept once under a number, ready to be compared and searched.
/// Only grows. One thread at a time.
class WIDGETS_EXPORT EventTexts
{
public:
    using Number = std::uint32_t;

    /// Bytes of a text that are kept: of longer ones the beginning.
    static constexpr std::size_t LongestText = 8192;

    EventTexts();
    ~EventTexts();

    /// 0 for the empty text. UTF-8.
    Number add(std::string_view text);
    std::string_view view(Number number) const { return m_views[number].text; }
    QString string(Number number) const;
    bool isCut(Number number) const { return m_views[number].isCut; }
    Number count() const { return Number(m_views.size()); }
    /// Memory taken by texts and keys.
    std::size_t bytes() const { return m_bytes; }

    /// Below, at or above 0 as one text stands before, beside or after the other.
    int compare(Number left, Number right) const;
    /// For each text its place among all; those of the same key have the same place. Worked out
    /// when texts were added since the last time.
    const std::vector<Number> &places() const;

    /// For each text 1 when it contains that one, whatever the case of letters, else 0.
    std::vector<char> containing(std::string_view part) const;
    /// The same for one text and the key of the part: see EventTextKey.
    bool hasKeyPart(Number number, std::string_view part) const
    {
        return m_views[number].key.find(part) != std::string_view::npos;
    }

private:
    struct View
    {
        std::string_view text;
        std::string_view key;
        bool isCut = false;
    };
    /// Keys one behind the other, each ended by 0.
    struct Block
    {
        std::string keys;
        std::string texts;
        Number first = 0; ///< text that begins it
    };

    Number *slotOf(std::string_view text, std::size_t hash);
    void grow();
    Block &blockFor(std::size_t text, std::size_t key);

    std::vector<View> m_views;
    std::vector<std::uint32_t> m_hashes;
    std::vector<Number> m_slots; // open addressing; 0: free
    std::vector<std::unique_ptr<Block>> m_blocks;
    std::size_t m_bytes = 0;
    std::string m_key; // of the text that is added
    mutable std::vector<Number> m_places;
};

} // namespace Widgets
