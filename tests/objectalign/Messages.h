// What a command prints.
#pragma once

#include "ed/Session.h"

#include <string>

namespace qx::tests {

/// One message behind the other; "/" stands for a line feed.
class Messages final : public ed::CommandObserver {
public:
    explicit Messages(ed::Session& session) { session.observer = this; }

    void commandBegins(const db::Drawing*, const std::string&) override {}
    void drawingChanges() override {}
    void selected(const ed::RecordSet&) override {}
    void message(std::string_view text) override {
        for (const char each : text) all += each == '\n' ? '/' : each;
    }
    void refused(const db::Record*, Acad::ErrorStatus) override {}
    void commandEnds(db::Drawing*, ed::CommandEnd) override {}

    std::string all;
};

} // namespace qx::tests
