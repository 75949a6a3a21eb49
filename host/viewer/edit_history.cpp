#include "host/viewer/edit_history.h"

#include "host/viewer/viewer_delegate.h"

namespace sorrel {

namespace {

bool sameLocation(const Location& a, const Location& b) {
    return a.attributes.get() == b.attributes.get() && a.local == b.local;
}

/// Whether `path` lies below (or is) one of the paths removed so far.
bool below(const std::string& path, const std::vector<std::string>& removed) {
    for (const std::string& top : removed)
        if (path == top || path.rfind(top + "/", 0) == 0) return true;
    return false;
}

}  // namespace

void EditHistory::begin() {
    if (editing()) end("edit");
    before_ = delegate_.scene().locations();
}

bool EditHistory::end(const std::string& label) {
    if (!before_) return false;
    const Locations before = std::move(*before_);
    before_.reset();
    const Locations& now = delegate_.scene().locations();

    Step step{label, {}};
    // Both maps are in path order, so parents come before their children.
    auto b = before.begin();
    auto a = now.begin();
    while (b != before.end() || a != now.end()) {
        if (a == now.end() || (b != before.end() && b->first < a->first)) {
            step.changes.push_back({b->first, b->second, std::nullopt});
            ++b;
        } else if (b == before.end() || a->first < b->first) {
            step.changes.push_back({a->first, std::nullopt, a->second});
            ++a;
        } else {
            if (!sameLocation(b->second, a->second))
                step.changes.push_back({a->first, b->second, a->second});
            ++a;
            ++b;
        }
    }
    if (step.changes.empty()) return false;
    steps_.resize(done_);
    steps_.push_back(std::move(step));
    done_ = steps_.size();
    return true;
}

std::optional<std::string> EditHistory::undo() {
    if (editing()) end("edit");
    if (!canUndo()) return std::nullopt;
    const Step& step = steps_[--done_];
    apply(step.changes, /* backwards = */ true);
    return step.label;
}

std::optional<std::string> EditHistory::redo() {
    if (editing()) end("edit");
    if (!canRedo()) return std::nullopt;
    const Step& step = steps_[done_++];
    apply(step.changes, /* backwards = */ false);
    return step.label;
}

std::vector<std::string> EditHistory::labels() const {
    std::vector<std::string> labels;
    for (const Step& step : steps_) labels.push_back(step.label);
    return labels;
}

void EditHistory::apply(const std::vector<Change>& changes, bool backwards) {
    Scene& scene = delegate_.scene();
    // A removed subtree is reported by its top only, as the host reports any removal.
    std::vector<std::string> removed;
    for (const Change& change : changes) {
        const std::optional<Location>& from = backwards ? change.after : change.before;
        const std::optional<Location>& to = backwards ? change.before : change.after;
        if (!to) {
            if (below(change.path, removed)) continue;
            delegate_.removeLocation(change.path);
            removed.push_back(change.path);
        } else if (!from) {
            delegate_.putLocation(change.path, to->attributes, to->local);
        } else {
            // The location keeps its selection: selecting is no edit.
            scene.set(change.path, to->attributes, to->local);
            const bool attributesChanged = from->attributes.get() != to->attributes.get();
            if (from->local == to->local)
                delegate_.sendLocation(change.path);
            else
                delegate_.sendTransformChange(change.path, attributesChanged);
        }
    }
}

}  // namespace sorrel
