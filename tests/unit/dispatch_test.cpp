#include <gtest/gtest.h>

#include <set>

#include "frame/dispatch.hpp"

namespace kiv {
namespace {

TEST(InterfaceTable, NamesAndIdsAreUnique) {
    std::set<std::int32_t> ids;
    for (const Member& m : InterfaceMembers()) {
        EXPECT_TRUE(ids.insert(m.id).second) << m.name;
        EXPECT_EQ(FindMember(m.name), &m);
    }
}

}  // namespace
}  // namespace kiv
