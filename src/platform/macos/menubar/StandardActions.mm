#include "platform/macos/menubar/StandardActions.h"

#include <algorithm>
#include <array>

/// Actions of the responder chain that no public class declares.
@protocol ThermopixUndoActions
- (void)undo:(id)sender;
- (void)redo:(id)sender;
@end

namespace thermopix {

SEL standardAction(MenuAction action) {
    struct Row {
        MenuAction action;
        SEL selector;
    };
    static const std::array rows{
        Row{MenuAction::hide, @selector(hide:)},
        Row{MenuAction::hideOtherApplications, @selector(hideOtherApplications:)},
        Row{MenuAction::unhideAllApplications, @selector(unhideAllApplications:)},
        Row{MenuAction::terminate, @selector(terminate:)},
        Row{MenuAction::undo, @selector(undo:)},
        Row{MenuAction::redo, @selector(redo:)},
        Row{MenuAction::cut, @selector(cut:)},
        Row{MenuAction::copy, @selector(copy:)},
        Row{MenuAction::paste, @selector(paste:)},
        Row{MenuAction::selectAll, @selector(selectAll:)},
        Row{MenuAction::performClose, @selector(performClose:)},
        Row{MenuAction::performMiniaturize, @selector(performMiniaturize:)},
        Row{MenuAction::arrangeInFront, @selector(arrangeInFront:)},
    };
    const auto* row = std::find_if(rows.begin(), rows.end(), [&](const Row& each) { return each.action == action; });
    return row != rows.end() ? row->selector : nullptr;
}

}  // namespace thermopix
