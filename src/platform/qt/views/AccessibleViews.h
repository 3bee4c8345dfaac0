#pragma once

/// Makes `AccessibleElement`s known to assistive technology.
namespace thermopix::AccessibleViews {

/// Once, before the first window.
void install();

}  // namespace thermopix::AccessibleViews
