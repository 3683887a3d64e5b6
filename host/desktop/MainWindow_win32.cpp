#include "desktop/MainWindow_win32.h"

#include "afx/ModalLoop.h"
#include "desktop/resource.h"
#include "desktop/windowProcedure_win32.h"
#include "os/encoding.h"

#include <commdlg.h>

#include <algorithm>
#include <array>
#include <utility>

namespace qx::desktop {
namespace {

constexpr wchar_t className[] = L"QxDesk";
constexpr int toolbarIcon = 24; // pixels at 96 dots per inch

struct Button {
    int command;
    const wchar_t* text;
    const wchar_t* tip;
    int icon; ///< of the resources; 0: none
};
constexpr Button buttons[] = {
    {ID_OPEN, L"打开", L"打开图形 (Ctrl+O)", 0},
    {ID_SAVE, L"保存", L"保存图形 (Ctrl+S)", 0},
    {ID_UNDO, L"放弃", L"放弃上一个命令 (Ctrl+Z)", 0},
    {ID_REDO, L"重做", L"重做放弃的命令 (Ctrl+Y)", 0},
    {ID_ZOOM_EXTENTS, L"全图", L"显示全部图形 (双击鼠标中键)", 0},
    {ID_OBJECT_ALIGN, L"对象对齐", L"对象对齐 (KV_ObjectAlign)：把对象转到直线或切线上", IDI_OBJECT_ALIGN},
    {ID_POSITION_ALIGN, L"位置对齐", L"位置对齐 (KV_PositionAlign)：对齐到边、中心线，或均匀分布",
     IDI_POSITION_ALIGN},
};

/// What a menu or button does in words that could be typed.
const char* typedFor(int command) {
    switch (command) {
    case ID_UNDO:
        return "U";
    case ID_REDO:
        return "REDO";
    case ID_ERASE:
        return "ERASE";
    case ID_GROUP:
        return "GROUP";
    case ID_ZOOM_WINDOW:
        return "ZOOM W";
    case ID_OBJECT_ALIGN:
        return "KV_ObjectAlign";
    case ID_POSITION_ALIGN:
        return "KV_PositionAlign";
    default:
        return nullptr;
    }
}

/// A file name that a person chooses; empty when they think better of it.
std::wstring chosenFile(HWND owner, const std::wstring& folder, bool isForSaving) {
    std::array<wchar_t, 4096> path{};
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = L"DXF 图形 (*.dxf)\0*.dxf\0所有文件\0*.*\0";
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrDefExt = L"dxf";
    dialog.lpstrInitialDir = folder.c_str();
    dialog.Flags =
        OFN_NOCHANGEDIR | OFN_HIDEREADONLY | (isForSaving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL isChosen = isForSaving ? ::GetSaveFileNameW(&dialog) : ::GetOpenFileNameW(&dialog);
    return isChosen ? path.data() : std::wstring{};
}

std::string quoted(const std::wstring& path) { return '"' + os::toUtf8(path) + '"'; }

} // namespace

MainWindow::MainWindow() {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    const HICON icon = ::LoadIconW(instance, MAKEINTRESOURCEW(IDI_DESK));
    WNDCLASSEXW info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = &windowProcedure<MainWindow>;
    info.hInstance = instance;
    info.hIcon = icon;
    info.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    info.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    info.lpszMenuName = MAKEINTRESOURCEW(IDM_DESK);
    info.lpszClassName = className;
    ::RegisterClassExW(&info);
    RECT screen{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    const LONG dotsPerInch = static_cast<LONG>(::GetDpiForSystem());
    const LONG width = ::MulDiv(1280, dotsPerInch, 96),
               height = ::MulDiv(860, dotsPerInch, 96); // if there is room
    window_ =
        ::CreateWindowExW(WS_EX_ACCEPTFILES, className, L"qxdesk", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                          screen.left, screen.top, std::min(width, screen.right - screen.left),
                          std::min(height, screen.bottom - screen.top), nullptr, nullptr, instance, this);
    accelerators_ = ::LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDA_DESK));
    makeToolbar();
    statusLine_ = ::CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0,
                                    0, 0, 0, window_, nullptr, instance, nullptr);
    pane_.emplace(window_);
    afx::setMainWindow(window_);
}

MainWindow::~MainWindow() {
    afx::setMainWindow(nullptr);
    if (window_) ::DestroyWindow(window_);
    if (icons_) ::ImageList_Destroy(icons_);
}

void MainWindow::attach(ed::Session& session, Desk& desk) {
    session_ = &session;
    desk_ = &desk;
    canvas_.emplace(window_, desk);
    pane_->setDesk(&desk);
    arrange();
    ::ShowWindow(window_, SW_SHOWDEFAULT);
    pane_->focus();
}

void MainWindow::makeToolbar() {
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    const int size = ::MulDiv(toolbarIcon, static_cast<int>(::GetDpiForWindow(window_)), 96);
    toolbar_ = ::CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                                 WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS, 0, 0,
                                 0, 0, window_, nullptr, instance, nullptr);
    ::SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    icons_ = ::ImageList_Create(size, size, ILC_COLOR32, static_cast<int>(std::size(buttons)), 0);
    ::SendMessageW(toolbar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(icons_));
    for (const Button& each : buttons) {
        int image = I_IMAGENONE;
        if (each.icon) {
            const auto icon = static_cast<HICON>(
                ::LoadImageW(instance, MAKEINTRESOURCEW(each.icon), IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
            image = ::ImageList_AddIcon(icons_, icon);
            ::DestroyIcon(icon);
        }
        TBBUTTON button{};
        button.iBitmap = image;
        button.idCommand = each.command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE | BTNS_SHOWTEXT;
        button.iString = reinterpret_cast<INT_PTR>(each.text);
        ::SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
}

LRESULT MainWindow::handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    window_ = window;
    switch (message) {
    case WM_SIZE:
        arrange();
        return 0;
    case WM_SETFOCUS:
        if (pane_) pane_->focus();
        return 0;
    case WM_COMMAND:
        if (lParam == 0 || reinterpret_cast<HWND>(lParam) == toolbar_) obey(LOWORD(wParam));
        return 0;
    case WM_INITMENUPOPUP:
        checkMenu(reinterpret_cast<HMENU>(wParam));
        return 0;
    case WM_NOTIFY:
        if (auto* header = reinterpret_cast<NMHDR*>(lParam); header->code == TTN_GETDISPINFOW)
            showTip(*reinterpret_cast<NMTTDISPINFOW*>(lParam));
        return 0;
    case WM_DROPFILES:
        takeDropped(reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_DPICHANGED: {
        const RECT& place = *reinterpret_cast<const RECT*>(lParam);
        pane_->setDotsPerInch(HIWORD(wParam));
        ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
                       place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    case WM_CLOSE:
        if (desk_) desk_->close();
        return 0;
    default:
        return ::DefWindowProcW(window_, message, wParam, lParam);
    }
}

void MainWindow::arrange() {
    if (!canvas_ || ::IsIconic(window_)) return;
    RECT area{}, bar{};
    ::SendMessageW(toolbar_, TB_AUTOSIZE, 0, 0);
    ::SendMessageW(statusLine_, WM_SIZE, 0, 0);
    const int coordinates = ::MulDiv(400, static_cast<int>(::GetDpiForWindow(window_)), 96);
    const std::array<int, 2> parts{coordinates, -1};
    ::SendMessageW(statusLine_, SB_SETPARTS, parts.size(), reinterpret_cast<LPARAM>(parts.data()));
    shownSnaps_ = nullptr;
    ::GetClientRect(window_, &area);
    ::GetWindowRect(toolbar_, &bar);
    area.top += bar.bottom - bar.top;
    ::GetWindowRect(statusLine_, &bar);
    area.bottom -= bar.bottom - bar.top;
    area.bottom = std::max(area.top, area.bottom);
    RECT pane = area;
    pane.top = area.bottom - pane_->heightFor(static_cast<int>(::GetDpiForWindow(window_)));
    area.bottom = pane.top = std::max(area.top, pane.top);
    canvas_->place(area);
    pane_->place(pane);
}

bool MainWindow::handleNext() {
    canvas_->update();
    showStatus();
    showName();
    MSG message{};
    const BOOL got = ::GetMessageW(&message, nullptr, 0, 0);
    if (got <= 0) return false;
    if (message.message == WM_MOUSEWHEEL) {
        if (!pane_->scroll(message)) canvas_->wheel(GET_WHEEL_DELTA_WPARAM(message.wParam), message.pt);
        return true;
    }
    if (::TranslateAcceleratorW(window_, accelerators_, &message)) return true;
    pane_->redirect(message);
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
    return true;
}

void MainWindow::obey(int command) {
    if (!desk_) return;
    if (const char* typed = typedFor(command)) {
        pane_->setTyped({});
        return desk_->launch(typed);
    }
    switch (command) {
    case ID_OPEN:
        return open();
    case ID_SAVE:
        return save();
    case ID_SAVE_AS:
        return saveAs();
    case ID_EXIT:
        return desk_->close();
    case ID_ZOOM_EXTENTS:
        return desk_->zoomExtents();
    case ID_DARK:
    case ID_LIGHT:
        return desk_->setGround(command == ID_DARK ? draw::Ground::dark : draw::Ground::light);
    case ID_SNAPS:
        return desk_->toggleSnaps();
    case ID_ABOUT:
        return tells("qxdesk " QX_VERSION "\n图形窗口：打开 DXF 图形，执行对象对齐和位置对齐。");
    default:
        return;
    }
}

bool MainWindow::isModified() const { return session_->drawing() && session_->drawing()->isModified(); }

bool MainWindow::asks(const std::string& question) {
    return ::MessageBoxW(window_, os::toWide(question).c_str(), L"qxdesk", MB_YESNO | MB_ICONQUESTION) ==
           IDYES;
}

void MainWindow::tells(const std::string& sentence) {
    ::MessageBoxW(window_, os::toWide(sentence).c_str(), L"qxdesk", MB_OK | MB_ICONINFORMATION);
}

std::wstring MainWindow::folder() const {
    const std::wstring path = session_->drawing() ? os::toWide(session_->drawing()->path()) : std::wstring{};
    return path.substr(0, std::min(path.find_last_of(L"/\\"), path.size()));
}

void MainWindow::open() {
    if (const std::wstring path = chosenFile(window_, folder(), false); !path.empty()) openFile(path);
}

void MainWindow::openFile(const std::wstring& path) {
    desk_->betweenCommands([this, path] { openBetweenCommands(path); });
}

// The command's own question about changes is answered beforehand, when nothing can change any more.
void MainWindow::openBetweenCommands(const std::wstring& path) {
    const Changes changes = askAboutChanges();
    if (changes == Changes::stay) return;
    if (changes == Changes::save) {
        desk_->type("SAVE");
        return desk_->afterwards([this, path] {
            if (!isModified()) openBetweenCommands(path); // else it says why it could not be saved
        });
    }
    desk_->type((isModified() ? "OPEN Y\n" : "OPEN\n") + quoted(path));
}

void MainWindow::save() {
    const db::Drawing* drawing = session_->drawing();
    if (drawing && !os::isFile(drawing->path())) return saveAs();
    desk_->launch("SAVE");
}

void MainWindow::saveAs() {
    if (!session_->drawing()) return;
    const std::wstring path = chosenFile(window_, folder(), true);
    if (path.empty()) return;
    desk_->launch("SAVEAS\n" + quoted(path) + (os::exists(os::toUtf8(path)) ? "\nY" : ""));
}

MainWindow::Changes MainWindow::askAboutChanges() {
    if (!isModified()) return Changes::drop;
    const std::string question = "是否保存对 " + session_->drawing()->path() + " 的修改?";
    switch (
        ::MessageBoxW(window_, os::toWide(question).c_str(), L"qxdesk", MB_YESNOCANCEL | MB_ICONWARNING)) {
    case IDYES:
        return Changes::save;
    case IDNO:
        return Changes::drop;
    default:
        return Changes::stay;
    }
}

bool MainWindow::mayClose() {
    const Changes changes = askAboutChanges();
    if (changes == Changes::save) {
        save();
        desk_->close(); // asks again if that failed
    }
    return changes == Changes::drop;
}

void MainWindow::takeDropped(HDROP drop) {
    std::array<wchar_t, 4096> path{};
    const UINT length = ::DragQueryFileW(drop, 0, path.data(), static_cast<UINT>(path.size()));
    ::DragFinish(drop);
    if (length > 0) openFile(path.data());
}

void MainWindow::showTip(NMTTDISPINFOW& info) const {
    for (const Button& each : buttons)
        if (static_cast<UINT_PTR>(each.command) == info.hdr.idFrom)
            info.lpszText = const_cast<wchar_t*>(each.tip);
}

void MainWindow::checkMenu(HMENU menu) const {
    if (!desk_) return;
    const bool isDark = desk_->ground() == draw::Ground::dark;
    ::CheckMenuRadioItem(menu, ID_DARK, ID_LIGHT, isDark ? ID_DARK : ID_LIGHT, MF_BYCOMMAND);
    ::CheckMenuItem(menu, ID_SNAPS, desk_->areSnapsOn() ? MF_CHECKED : MF_UNCHECKED);
}

void MainWindow::showStatus() {
    setStatus(desk_->status());
    const wchar_t* snaps = desk_->areSnapsOn() ? L"对象捕捉 开 (F3)" : L"对象捕捉 关 (F3)";
    if (snaps == std::exchange(shownSnaps_, snaps)) return;
    ::SendMessageW(statusLine_, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(snaps));
}

void MainWindow::setStatus(const std::string& text) {
    if (text == shownStatus_) return;
    shownStatus_ = text;
    ::SendMessageW(statusLine_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(os::toWide(text).c_str()));
}

void MainWindow::showProgress(std::string_view job, std::uint64_t done, std::uint64_t total) {
    if (total == 0) return;
    const std::string name = job == "loading" ? "正在打开" : job == "saving" ? "正在保存" : std::string{job};
    setStatus(name + " " + std::to_string(done * 100 / total) + " %");
    ::UpdateWindow(statusLine_);
}

void MainWindow::showName() {
    const db::Drawing* drawing = session_->drawing();
    const std::string name =
        drawing ? drawing->path() + (drawing->isModified() ? "*" : "") + " - qxdesk" : "qxdesk";
    if (name == shownName_) return;
    shownName_ = name;
    ::SetWindowTextW(window_, os::toWide(name).c_str());
}

} // namespace qx::desktop
