#pragma once

#include "platform/qt/views/ViewControl.h"
#include "shell/ViewLayout.h"

/// What nodes are shown by: one maker for each kind of control.
namespace thermopix::Controls {

using Make = ViewControl*(QWidget* parent, const ReportEvent& report);

/// Null where only the node's children are seen.
[[nodiscard]] Make* makerOf(const ViewNode& node);

/// How large the leaf wants to be, in this shell's fonts and controls.
[[nodiscard]] Size wantedSize(const ViewNode& leaf, double width);

/// The same, as the layout takes it.
inline constexpr auto measure = [](const ViewNode& leaf, double width) { return wantedSize(leaf, width); };

/// What the user only looks at: a text, a picture, a ground for other controls, or a whole stack that is one element to
/// assistive technology.
[[nodiscard]] Make makePaintedView;

/// Scrolls its content vertically; the bar lies over the content's margin. Its widget is a `QScrollArea`.
[[nodiscard]] Make makeScrollView;

/// A button whose label is the node's children. Its widget is a `PlainButton`.
[[nodiscard]] Make makePlainButton;

[[nodiscard]] Make makePushButton;
[[nodiscard]] Size pushButtonSize(const ViewNode& node);

/// A switch at the trailing end, its title at the leading end; all of it can be clicked.
[[nodiscard]] Make makeToggleSwitch;
[[nodiscard]] Size toggleSwitchSize(const ViewNode& node);

/// Choices side by side, as wide as each other; one stop of the tab key, and the arrow keys choose.
[[nodiscard]] Make makeSegmentedControl;
[[nodiscard]] Size segmentedControlSize(const ViewNode& node);

/// A popup picker at the trailing end, its title at the leading end.
[[nodiscard]] Make makeLabelledPicker;
[[nodiscard]] Size labelledPickerSize(const ViewNode& node);

/// The size of the largest title among a picker's items.
[[nodiscard]] Size largestTitle(const ViewNode& picker);

}  // namespace thermopix::Controls
