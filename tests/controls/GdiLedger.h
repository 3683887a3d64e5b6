// Which GDI objects and icons a program or module has taken and not given back. Counts its calls of the
// system itself, as long as it lives, one ledger at a time.
#pragma once

#include <cstddef>
#include <windows.h>

namespace qx::tests {

class GdiLedger {
public:
    /// Watches what the code of this module calls.
    explicit GdiLedger(HMODULE module);
    ~GdiLedger();
    GdiLedger(const GdiLedger&) = delete;
    GdiLedger& operator=(const GdiLedger&) = delete;

    std::size_t taken() const;   ///< since the beginning
    std::size_t alive() const;   ///< of these, not given back
    std::size_t strange() const; ///< given back though nobody took them, or twice

private:
    HMODULE module_;
};

} // namespace qx::tests
