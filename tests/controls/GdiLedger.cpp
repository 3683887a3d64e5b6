#include "controls/GdiLedger.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string_view>

namespace qx::tests {
namespace {

std::multiset<void*> objects;
std::size_t takenCount = 0, strangeCount = 0;

void take(void* object) {
    if (!object) return;
    ++takenCount;
    objects.insert(object);
}

void giveBack(void* object) {
    const auto found = objects.find(object);
    if (found == objects.end())
        ++strangeCount;
    else
        objects.erase(found);
}

/// Stands in for the system's function number `index`, which makes or loads an object.
template <int index, class Function> struct Taker;
template <int index, class Result, class... Arguments> struct Taker<index, Result(WINAPI*)(Arguments...)> {
    static inline Result(WINAPI* original)(Arguments...) = nullptr;
    static Result WINAPI call(Arguments... arguments) {
        const Result object = original(arguments...);
        take(object);
        return object;
    }
};

/// And one that takes an object back.
template <int index, class Function> struct Giver;
template <int index, class Argument> struct Giver<index, BOOL(WINAPI*)(Argument)> {
    static inline BOOL(WINAPI* original)(Argument) = nullptr;
    static BOOL WINAPI call(Argument object) {
        giveBack(object);
        return original(object);
    }
};

/// Shared icons belong to the system.
struct ImageLoader {
    static inline decltype(&::LoadImageW) original = nullptr;
    static HANDLE WINAPI call(HINSTANCE module, LPCWSTR name, UINT type, int x, int y, UINT flags) {
        const HANDLE image = original(module, name, type, x, y, flags);
        if (!(flags & LR_SHARED)) take(image);
        return image;
    }
};

struct Watched {
    const wchar_t* library;
    const char* name;
    void* standIn;
    void** original;
};

template <class StandIn> Watched watched(const wchar_t* library, const char* name) {
    return {library, name, reinterpret_cast<void*>(&StandIn::call),
            reinterpret_cast<void**>(&StandIn::original)};
}

const Watched watchedFunctions[] = {
    watched<Taker<0, decltype(&::CreateCompatibleDC)>>(L"gdi32", "CreateCompatibleDC"),
    watched<Taker<1, decltype(&::CreateCompatibleBitmap)>>(L"gdi32", "CreateCompatibleBitmap"),
    watched<Taker<7, decltype(&::CreateBitmap)>>(L"gdi32", "CreateBitmap"),
    watched<Taker<8, decltype(&::CreateDIBSection)>>(L"gdi32", "CreateDIBSection"),
    watched<Taker<9, decltype(&::CreateIconIndirect)>>(L"user32", "CreateIconIndirect"),
    watched<Taker<2, decltype(&::CreatePen)>>(L"gdi32", "CreatePen"),
    watched<Taker<3, decltype(&::CreateSolidBrush)>>(L"gdi32", "CreateSolidBrush"),
    watched<Taker<4, decltype(&::CreateFontIndirectW)>>(L"gdi32", "CreateFontIndirectW"),
    watched<Taker<5, decltype(&::CreateRectRgn)>>(L"gdi32", "CreateRectRgn"),
    watched<Taker<6, decltype(&::CopyIcon)>>(L"user32", "CopyIcon"),
    watched<ImageLoader>(L"user32", "LoadImageW"),
    watched<Giver<0, decltype(&::DeleteObject)>>(L"gdi32", "DeleteObject"),
    watched<Giver<1, decltype(&::DeleteDC)>>(L"gdi32", "DeleteDC"),
    watched<Giver<2, decltype(&::DestroyIcon)>>(L"user32", "DestroyIcon"),
};

template <class T> T* at(HMODULE module, std::size_t offset) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + offset);
}

/// Calls `visit(name, place)` for each function that the module imports by name.
template <class Visit> void forEachImport(HMODULE module, Visit visit) {
    const auto* headers =
        at<IMAGE_NT_HEADERS>(module, static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress); library->Name;
         ++library) {
        auto* name = at<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
        auto* place = at<IMAGE_THUNK_DATA>(module, library->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++place)
            if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                visit(at<IMAGE_IMPORT_BY_NAME>(module, name->u1.AddressOfData)->Name,
                      reinterpret_cast<void**>(&place->u1.Function));
    }
}

void put(void** place, void* function) {
    DWORD old = 0;
    ::VirtualProtect(place, sizeof *place, PAGE_READWRITE, &old);
    *place = function;
    ::VirtualProtect(place, sizeof *place, old, &old);
}

} // namespace

GdiLedger::GdiLedger(HMODULE module) : module_{module} {
    objects.clear();
    takenCount = strangeCount = 0;
    for (const Watched& each : watchedFunctions)
        *each.original =
            reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(each.library), each.name));
    forEachImport(module_, [](const char* name, void** place) {
        for (const Watched& each : watchedFunctions)
            if (std::string_view{each.name} == name) put(place, each.standIn);
    });
}

GdiLedger::~GdiLedger() {
    forEachImport(module_, [](const char* name, void** place) {
        for (const Watched& each : watchedFunctions)
            if (std::string_view{each.name} == name) put(place, *each.original);
    });
}

std::size_t GdiLedger::taken() const { return takenCount; }
std::size_t GdiLedger::alive() const { return objects.size(); }
std::size_t GdiLedger::strange() const { return strangeCount; }

} // namespace qx::tests
