#pragma once

/// Makes `AccessibleElement`s known to assistive technology.
namespace thermopix::AccessibleViews {

/// To be called once, before the first window.
void install();

}  // namespace thermopix::AccessibleViews
