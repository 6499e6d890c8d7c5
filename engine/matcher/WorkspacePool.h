#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <vector>

namespace vantrel {

// Matchers keep their working memory per thread from search to search, so that a search works in
// memory that is already mapped; freeing it each time made repeated searches much slower.
template <typename Workspace>
std::vector<std::unique_ptr<Workspace>>& idleWorkspaces() {
    thread_local std::vector<std::unique_ptr<Workspace>> idle;
    return idle;
}

/// A workspace of this thread that no search is using, or a new one.
template <typename Workspace>
std::unique_ptr<Workspace> borrowWorkspace() {
    auto& idle = idleWorkspaces<Workspace>();
    if (idle.empty()) return std::make_unique<Workspace>();
    std::unique_ptr<Workspace> space = std::move(idle.back());
    idle.pop_back();
    return space;
}

/// As above, preferring the workspace handed back last for which `fits` holds: one that kept
/// something the search can use again. Without one, a new workspace while fewer than `kept` are
/// idle, so that searches of different patterns keep theirs apart; else the one idle longest.
template <typename Workspace, typename Fits>
std::unique_ptr<Workspace> borrowWorkspace(Fits fits, std::size_t kept) {
    auto& idle = idleWorkspaces<Workspace>();
    auto chosen = std::find_if(idle.rbegin(), idle.rend(), [&](const auto& space) {
                      return fits(*space);
                  }).base();
    if (chosen == idle.begin()) {
        if (idle.size() < kept) return std::make_unique<Workspace>();
        chosen = std::next(idle.begin());
    }
    std::unique_ptr<Workspace> space = std::move(*std::prev(chosen));
    idle.erase(std::prev(chosen));
    return space;
}

/// Hands a workspace back for the next search of this thread.
template <typename Workspace>
void returnWorkspace(std::unique_ptr<Workspace> space) {
    idleWorkspaces<Workspace>().push_back(std::move(space));
}

}  // namespace vantrel
