#include "platform/linux/glib/GLibHandles.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(GLibHandles, AHandleIsAsSmallAsAPointer) {
    EXPECT_EQ(sizeof(GObjectHandle<GCancellable>), sizeof(void*));
    EXPECT_EQ(sizeof(GVariantHandle), sizeof(void*));
    EXPECT_EQ(sizeof(GSourceHandle), sizeof(void*));
}

TEST(GLibHandles, AnObjectLivesUntilItsLastHandleIsGone) {
    GObjectHandle<GCancellable> first(g_cancellable_new());
    gpointer watched = first.get();
    g_object_add_weak_pointer(G_OBJECT(first.get()), &watched);
    auto second = retained(first.get());
    first.reset();
    EXPECT_NE(watched, nullptr);
    second.reset();
    EXPECT_EQ(watched, nullptr);
    EXPECT_EQ(retained<GCancellable>(nullptr), nullptr);
}

TEST(GLibHandles, ASourceLeavesItsContextWithItsHandle) {
    GSourceHandle source(g_idle_source_new());
    const auto id = g_source_attach(source.get(), nullptr);
    EXPECT_NE(g_main_context_find_source_by_id(nullptr, id), nullptr);
    source.reset();
    EXPECT_EQ(g_main_context_find_source_by_id(nullptr, id), nullptr);
}

TEST(GLibHandles, AnErrorSlotSaysWhatWentWrongAndServesAgain) {
    GErrorSlot error;
    EXPECT_EQ(error.message(), "");
    EXPECT_EQ(g_key_file_get_integer(GKeyFileHandle(g_key_file_new()).get(), "group", "key", error.out()), 0);
    EXPECT_TRUE(error.matches(G_KEY_FILE_ERROR, G_KEY_FILE_ERROR_GROUP_NOT_FOUND));
    EXPECT_NE(error.message().find("group"), std::string_view::npos);
    EXPECT_NE(error.out(), nullptr);
    EXPECT_EQ(error.get(), nullptr);
}

}  // namespace
}  // namespace thermopix
