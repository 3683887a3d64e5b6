#include "ed/Session.h"

#include "acdocman.h"
#include "dbapserv.h"
#include "ed/hostCommands.h"
#include "rx/ModuleLoader.h"

#include <utility>

namespace qx::ed {

Session* Session::current_ = nullptr;

Session::Session(Transcript::Sink sink) : line_{std::move(sink)} {
    current_ = this;
    registerHostCommands();
    line_.transcript.onMessage = [this](std::string_view text) {
        if (observer) observer->message(text);
    };
    rx::moduleLoader().setReporter([this](const std::string& text) { line_.transcript.sentence(text); });
}

Session::~Session() {
    setDrawing(nullptr);
    rx::moduleLoader().setReporter({});
    current_ = nullptr;
}

void Session::setDrawing(std::unique_ptr<db::Drawing> drawing) {
    const auto tell = [this](bool open) {
        for (const std::string& sentence : rx::moduleLoader().setDrawingOpen(open))
            line_.transcript.sentence(sentence);
    };
    if (drawing_) tell(false);
    sets_.freeAll();
    previous.clear();
    pickFirst.clear();
    lastPoint = {};
    acdbHostApplicationServices()->setWorkingDatabase(drawing ? &drawing->database() : nullptr);
    document_ = drawing ? std::make_unique<AcApDocument>(drawing->database()) : nullptr;
    drawing_ = std::move(drawing);
    variables_.force("DWGNAME", drawing_ ? drawing_->path() : std::string{});
    if (drawing_) tell(true);
}

} // namespace qx::ed
