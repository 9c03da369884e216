#pragma once

#include <algorithm>

namespace orlenta::model {

/// The record with that id in a list, or null. Any thread.
template <typename List, typename Id>
[[nodiscard]] auto findRecord(const List &list, const Id &id) -> decltype(&*list.begin()) {
    const auto found = std::find_if(list.begin(), list.end(), [&](const auto &record) { return record.id == id; });
    return found == list.end() ? nullptr : &*found;
}

} // namespace orlenta::model
