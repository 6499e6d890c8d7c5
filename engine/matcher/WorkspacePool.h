#pragma once

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

/// Hands a workspace back for the next search of this thread.
template <typename Workspace>
void returnWorkspace(std::unique_ptr<Workspace> space) {
    idleWorkspaces<Workspace>().push_back(std::move(space));
}

}  // namespace vantrel
