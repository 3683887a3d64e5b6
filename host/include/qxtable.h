// Tables that a module gathers from all its sources without a list anywhere: each entry's address goes into a
// data section of the module's own, where the linker lays them side by side in the order in which they are
// written. How sections are bounded is the object format's business; this file holds all of it.
#pragma once

namespace qx::module {

/// The entries of one table; some may be null.
template <class Entry> struct TableView {
    const Entry** first;
    const Entry** last;

    const Entry** begin() const { return first; }
    const Entry** end() const { return last; }
    bool empty() const { return first == last; }
};

} // namespace qx::module

#if defined(_WIN32)

namespace qx::module {

/// The same pointer, of which the compiler no longer knows that it points to one object alone.
template <class Entry> const Entry** placed(const Entry** pointer) {
    asm("" : "+r"(pointer));
    return pointer;
}

} // namespace qx::module

// The linker sorts the parts of a section by what stands behind the $, and may leave gaps of zeros.
#define QX_TABLE_BOUND(SECTION, ENTRY, NAME, PLACE)                                                          \
    __attribute__((section(#SECTION "$" PLACE), used)) inline const ENTRY* NAME = nullptr;

/// Declares the table SECTION (a C identifier) of ENTRY records and a function that gives it. A module
/// without entries has an empty table.
#define QX_DECLARE_TABLE(SECTION, ENTRY, FUNCTION)                                                           \
    QX_TABLE_BOUND(SECTION, ENTRY, SECTION##First, "a")                                                      \
    QX_TABLE_BOUND(SECTION, ENTRY, SECTION##Last, "z")                                                       \
    inline qx::module::TableView<ENTRY> FUNCTION() {                                                         \
        return {qx::module::placed(&SECTION##First) + 1, qx::module::placed(&SECTION##Last)};                \
    }

#define QX_TABLE_PLACE(SECTION) #SECTION "$m"

#else

/// Declares the table SECTION (a C identifier) of ENTRY records and a function that gives it. A module
/// without entries has an empty table.
#define QX_DECLARE_TABLE(SECTION, ENTRY, FUNCTION)                                                           \
    extern "C" __attribute__((weak, visibility("hidden"))) const ENTRY* __start_##SECTION[];                 \
    extern "C" __attribute__((weak, visibility("hidden"))) const ENTRY* __stop_##SECTION[];                  \
    inline qx::module::TableView<ENTRY> FUNCTION() { return {__start_##SECTION, __stop_##SECTION}; }

#define QX_TABLE_PLACE(SECTION) #SECTION

#endif

// Where there is no such attribute, entries stay in order by themselves.
#if __has_attribute(no_reorder)
#define QX_TABLE_ORDER , no_reorder
#else
#define QX_TABLE_ORDER
#endif

/// Adds a record to a table, under a name that is unique in the source; the values follow.
#define QX_TABLE_ENTRY(SECTION, ENTRY, NAME, ...)                                                            \
    static const ENTRY NAME = {__VA_ARGS__};                                                                 \
    __attribute__((section(QX_TABLE_PLACE(SECTION)),                                                         \
                   used QX_TABLE_ORDER)) static const ENTRY* NAME##Address = &NAME
