// The frame: menu, toolbar, drawing, command line and status line, and the messages of all of them.
#pragma once

#include "desktop/Canvas_win32.h"
#include "desktop/CommandPane_win32.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <windows.h>
// In this order.
#include <commctrl.h>
#include <shellapi.h>

namespace qx::desktop {

class MainWindow {
public:
    MainWindow();
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    HWND window() const { return window_; }
    /// A message of the window.
    LRESULT handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    CommandPane& pane() { return *pane_; }
    /// From now on it shows what the desk does, and the desk is told what a person does.
    void attach(ed::Session& session, Desk& desk);
    /// Waits for what happens next and has it handled; false when the program is to end.
    bool handleNext();
    /// The name of the drawing and whether it has changes, in the caption.
    void showName();
    /// How far a long job is, in the status line.
    void showProgress(std::string_view job, std::uint64_t done, std::uint64_t total);
    /// A question with yes and no; the answer.
    bool asks(const std::string& question);
    void tells(const std::string& sentence);
    /// Whether the window may go, changes and all; saves them first where the person wants that.
    bool mayClose();

private:
    enum class Changes { save, drop, stay }; ///< what shall become of them

    void makeToolbar();
    void arrange();
    void obey(int command);
    void open();
    void openFile(const std::wstring& path);
    void openBetweenCommands(const std::wstring& path);
    void save();
    void saveAs();
    void takeDropped(HDROP drop);
    void showStatus();
    void setStatus(const std::string& text);
    void showTip(NMTTDISPINFOW& info) const;
    void checkMenu(HMENU menu) const;
    std::wstring folder() const;
    bool isModified() const;
    /// Drops them when there are none.
    Changes askAboutChanges();

    HWND window_ = nullptr, toolbar_ = nullptr, statusLine_ = nullptr;
    HIMAGELIST icons_ = nullptr;
    HACCEL accelerators_ = nullptr;
    std::optional<CommandPane> pane_;
    std::optional<Canvas> canvas_;
    ed::Session* session_ = nullptr;
    Desk* desk_ = nullptr;
    std::string shownStatus_, shownName_;
    const wchar_t* shownSnaps_ = nullptr;
};

} // namespace qx::desktop
