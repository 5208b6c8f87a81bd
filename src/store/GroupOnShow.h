// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/FileTypes.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

// An array from 0 to an upper bound; an index beyond is "Subscript out of range". Positions in a group are
// 1-based: element 0 exists and is not a photograph.
template <class Value>
class CheckedArray {
public:
    CheckedArray()
        : m_values(1)
    {
    }

    int upperBound() const { return static_cast<int>(m_values.size()) - 1; }
    const Value& operator()(std::int64_t index) const { return m_values[checked(index)]; }
    Value& operator()(std::int64_t index) { return m_values[checked(index)]; }

    void append(Value value) { m_values.push_back(std::move(value)); }
    // Element 0 alone, or 0 to `upperBound`, all as default.
    void clear() { m_values.assign(1, Value()); }
    void redimension(int upperBound) { m_values.assign(static_cast<std::size_t>(upperBound) + 1, Value()); }

private:
    std::size_t checked(std::int64_t index) const
    {
        if (index < 0 || index > upperBound())
            throw Failure(FailureKind::SubscriptOutOfRange);
        return static_cast<std::size_t>(index);
    }

    std::vector<Value> m_values;
};

// What was read from the list file of the group on show. To change it, change the file and read it again.
struct GroupOnShow {
    CheckedArray<std::string> GroupList;
    CheckedArray<std::int32_t> GroupSelect; // 1 selected, 0 not
    std::int32_t PhotoCount = 0;
    std::string CurrentGroupName;
    std::int32_t SelectedCount = 0; // as the status text shows it; not always the number of selected ones

    FileStamp stamp; // of the list file that was read

    // False if reading the list failed: GroupSelect still belongs to the group before, so it must not be used.
    bool isWhole = true;

    // Their positions, without any that both arrays don't have.
    std::vector<std::int32_t> selected() const
    {
        std::vector<std::int32_t> positions;
        for (std::int32_t i = 1; i <= std::min(GroupList.upperBound(), GroupSelect.upperBound()); ++i) {
            if (isWhole && GroupSelect(i) == 1)
                positions.push_back(i);
        }
        return positions;
    }

    // Its list file. Only the name identifies the group: its row in the list of groups may change.
    std::string currentGroupFile() const { return CurrentGroupName + ".lst"; }
};

} // namespace trovarium
