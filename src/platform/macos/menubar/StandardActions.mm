#include "platform/macos/menubar/StandardActions.h"

/// Actions of the responder chain that no public class declares.
@protocol ThermopixUndoActions
- (void)undo:(id)sender;
- (void)redo:(id)sender;
@end

namespace thermopix {

SEL standardAction(MenuAction action) {
    switch (action) {
        case MenuAction::hide:
            return @selector(hide:);
        case MenuAction::hideOtherApplications:
            return @selector(hideOtherApplications:);
        case MenuAction::unhideAllApplications:
            return @selector(unhideAllApplications:);
        case MenuAction::terminate:
            return @selector(terminate:);
        case MenuAction::undo:
            return @selector(undo:);
        case MenuAction::redo:
            return @selector(redo:);
        case MenuAction::cut:
            return @selector(cut:);
        case MenuAction::copy:
            return @selector(copy:);
        case MenuAction::paste:
            return @selector(paste:);
        case MenuAction::selectAll:
            return @selector(selectAll:);
        case MenuAction::performClose:
            return @selector(performClose:);
        case MenuAction::performMiniaturize:
            return @selector(performMiniaturize:);
        case MenuAction::arrangeInFront:
            return @selector(arrangeInFront:);
        case MenuAction::none:
        case MenuAction::selectPet:
        case MenuAction::selectUnit:
        case MenuAction::selectStyle:
        case MenuAction::openPreferencesItem:
        case MenuAction::checkForUpdates:
        case MenuAction::showAbout:
        case MenuAction::quit:
        case MenuAction::showAboutPanel:
            break;
    }
    return nullptr;
}

}  // namespace thermopix
