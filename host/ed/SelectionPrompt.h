// The dialogue in which a person selects objects: ALL, a window (W) or crossing (C), the last object (L), the
// previous selection (P), removing (R) and adding (A), a point, `(handent "2F")`, a pick
// `(list (handent "2F") (list x y z))`, until Enter.
//
// A point picks what lies under it, and a pick its object, and with it the selectable groups that it belongs
// to when PICKSTYLE is 1 or 3. A point that hits nothing is the first corner of a window when a second point
// follows: to the right it takes what lies inside, to the left what it touches. Objects that are named or
// found by a window come without their groups.
#pragma once

#include "ed/Session.h"
#include "ed/picking.h"

#include <optional>
#include <string>
#include <vector>

namespace qx::ed {

class QX_HOST_API SelectionPrompt {
public:
    enum class End { selected, nothing, cancelled };

    explicit SelectionPrompt(Session& session,
                             std::string addPrompt = "选择对象: ", std::string removePrompt = "删除对象: ");

    /// Asks until Enter or a cancel. The set is not empty after `selected`, and is then the session's
    /// previous one.
    End run();
    const RecordSet& set() const { return set_; }

private:
    using Records = std::vector<db::Record*>;

    End askUntilEnter();
    void take(const Input& input);
    bool takeOption(const std::string& option);
    void takeAll();
    void takeRectangle(Rectangle rectangle);
    void takeLast();
    void takePrevious();
    void takePoint(AcGePoint3d user);
    bool takeEntity(const std::string& form);
    void takePicked(db::Record* picked);

    Input askInput();
    /// What Enter means instead of a corner: who asked for a window gives that up, and only that.
    enum class OnEnter { leaveWindow, endSelection };
    std::optional<AcGePoint3d> askCorner(const std::string& prompt, OnEnter onEnter);
    std::optional<AcGePoint3d> askOpposite(const AcGePoint3d& corner, OnEnter onEnter);
    void takeWindow(const AcGePoint3d& first, const AcGePoint3d& second, Rectangle rectangle);
    void found(const Records& records, std::size_t groups = 0);
    void say(const std::string& sentence);

    Session& session_;
    const db::Drawing& drawing_;
    std::string addPrompt_, removePrompt_;
    RecordSet set_;
    std::optional<Input> pushedBack_;
    bool isPushedBack_ = false; ///< the answer that is being taken
};

} // namespace qx::ed
