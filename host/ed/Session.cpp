#include "ed/Session.h"

#include "acdocman.h"
#include "dbapserv.h"
#include "ed/hostCommands.h"
#include "ed/picking.h"
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
    rx::moduleLoader().setReporter([this](const std::string& text) { line_.note("模块出错", text); });
}

// Whoever observed it may be gone already.
Session::~Session() {
    observer = nullptr;
    setDrawing(nullptr);
    rx::moduleLoader().setReporter({});
    current_ = nullptr;
}

void Session::setDrawing(std::unique_ptr<db::Drawing> drawing) {
    const auto tell = [this](bool open) {
        for (const std::string& sentence : rx::moduleLoader().setDrawingOpen(open))
            line_.note("模块出错", sentence);
    };
    if (drawing_) tell(false);
    if (observer) observer->drawingChanges();
    sets_.freeAll();
    previous.clear();
    pickFirst.clear();
    lastPoint = {};
    acdbHostApplicationServices()->setWorkingDatabase(drawing ? &drawing->database() : nullptr);
    document_ = drawing ? std::make_unique<AcApDocument>(drawing->database()) : nullptr;
    drawing_ = std::move(drawing);
    if (drawing_)
        drawing_->setRefusalListener([this](const db::Record* record, Acad::ErrorStatus status) {
            if (observer) observer->refused(record, status);
        });
    variables_.force("DWGNAME", drawing_ ? drawing_->path() : std::string{});
    if (!drawing_) return;
    if (opened) opened(*drawing_);
    tell(true);
}

void Session::renameDrawing(const std::string& path) {
    drawing_->rename(path);
    variables_.force("DWGNAME", path);
}

double Session::pickReach() const { return pixelSize(*drawing_) * variables_.number("PICKBOX"); }

// A command opens what it changes one object after the other, which is all that the host sees of its
// progress.
void Session::noteSelection(const RecordSet& set) {
    constexpr std::size_t many = 20000;
    if (observer) observer->selected(set);
    if (!progress || set.size() < many) return;
    followsProgress_ = true;
    const std::string name = variables_.find("CMDNAMES")->text;
    drawing_->setWriteListener([this, name, total = set.size(), done = std::size_t{}]() mutable {
        if (done < total) ++done;
        progress(name, done, total);
    });
}

void Session::endProgress() {
    if (std::exchange(followsProgress_, false) && drawing_) drawing_->setWriteListener({});
}

} // namespace qx::ed
