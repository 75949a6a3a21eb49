#pragma once
// The viewer's history of edits, as the host keeps it: each step is what a
// gesture changed in the scene's locations (one drag, one package created,
// one edit in a panel), and undoing or redoing a step sends the plugin the
// location events the host sends for any change: a moved location's
// transform change, a removed location's removal, a new location as new.
//
// A step is taken by comparing the locations before and after the edit, so
// whatever made the change (the manipulator, a delegate command, the host
// itself) is recorded alike. Attributes are never changed in place, only
// replaced, so a location whose attribute reference is the same is unchanged.

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/viewer/scene.h"

namespace sorrel {

class ViewerDelegate;

class EditHistory {
public:
    explicit EditHistory(ViewerDelegate& delegate) : delegate_(delegate) {}

    /// Remembers the locations as they stand before an edit. An edit already
    /// begun is ended first, as a step without a name.
    void begin();
    /// Ends the edit: a step named `label` ("place /root/world/lgt/key", say)
    /// when it changed any location, and then the steps undone before it can
    /// no longer be redone. True when it made a step.
    bool end(const std::string& label);
    bool editing() const { return before_.has_value(); }

    bool canUndo() const { return done_ > 0; }
    bool canRedo() const { return done_ < steps_.size(); }
    /// Puts the locations of the latest step back as they were, telling the
    /// delegate's components; the step's label, or nothing when there is none.
    std::optional<std::string> undo();
    /// Makes the latest undone step again; its label, or nothing.
    std::optional<std::string> redo();

    /// Labels of the steps, oldest first, and how many of them are done.
    std::vector<std::string> labels() const;
    std::size_t done() const { return done_; }

private:
    using Locations = std::map<std::string, Location>;
    /// One location before and after a step; nothing where it did not exist.
    struct Change {
        std::string path;
        std::optional<Location> before;
        std::optional<Location> after;
    };
    struct Step {
        std::string label;
        std::vector<Change> changes;  // in path order: parents before children
    };

    /// Makes each location of `changes` as `after` (or `before` when
    /// `backwards`) says, and reports it as the host does.
    void apply(const std::vector<Change>& changes, bool backwards);

    ViewerDelegate& delegate_;
    std::optional<Locations> before_;
    std::vector<Step> steps_;
    std::size_t done_ = 0;
};

}  // namespace sorrel
