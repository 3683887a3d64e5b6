#include "TemporaryFolder.h"
#include "os/SharedObject.h"

using namespace qx::os;

namespace {

TEST(SharedObject, RefusesWithOneSentence) {
    TemporaryFolder folder;
    put(folder / "text.arx", "not a shared object");
    for (const std::string& path : {folder / "missing.arx", folder / "text.arx", folder.path().string()}) {
        const auto object = SharedObject::load(path);
        ASSERT_FALSE(object) << path;
        EXPECT_EQ(object.error().find("Can't load " + path + ": "), 0u) << object.error();
        EXPECT_EQ(object.error().find('\n'), std::string::npos);
    }
}

} // namespace
