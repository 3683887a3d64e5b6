// A folder for one test, gone after it.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

class TemporaryFolder {
public:
    TemporaryFolder() {
        static int counter = 0;
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string{"qx-"} + test->test_suite_name() + "-" + test->name() + "-" +
                           std::to_string(std::hash<std::string>{}(QX_BIN_DIR)) + "-" +
                           std::to_string(++counter);
        std::ranges::replace(name, '/', '-'); // of a test with parameters
        path_ = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(path_);
        std::filesystem::create_directory(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const { return path_; }
    std::size_t count() const {
        const std::filesystem::directory_iterator all{path_};
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

private:
    std::filesystem::path path_;
};

inline void put(const std::string& path, const std::string& content) {
    std::ofstream{std::filesystem::path{path}, std::ios::binary} << content;
}

inline std::string contentOf(const std::string& path) {
    std::ifstream in{std::filesystem::path{path}, std::ios::binary};
    return {std::istreambuf_iterator<char>{in}, {}};
}
