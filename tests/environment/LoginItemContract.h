#pragma once

#include <gtest/gtest.h>

#include "system/LoginItemManaging.h"

namespace thermopix {

/// What every login item keeps: a write that succeeds is what the system says afterwards, one that fails says why
/// and changes nothing, and repeating a write changes nothing.
inline void expectLoginItemContract(LoginItemManaging& loginItem) {
    for (const bool wanted : {true, true, false, false, true, false}) {
        const bool former = loginItem.isEnabled();
        const auto error = loginItem.setEnabled(wanted);
        if (error) {
            EXPECT_FALSE(error->description.empty());
            EXPECT_EQ(loginItem.isEnabled(), former);
        } else {
            EXPECT_EQ(loginItem.isEnabled(), wanted);
        }
    }
}

}  // namespace thermopix
