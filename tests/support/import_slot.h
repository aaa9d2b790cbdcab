#ifndef KORD_TESTS_IMPORT_SLOT_H
#define KORD_TESTS_IMPORT_SLOT_H

#include <cstring>

#include <windows.h>

/// Sends the calls of a function that a Windows module imports somewhere else. Nothing is put back: `set` does that.
class ImportSlot {
  public:
    ImportSlot(HMODULE module, const char* name) : base_(reinterpret_cast<char*>(module)) {
        const auto* const headers = at<IMAGE_NT_HEADERS>(at<IMAGE_DOS_HEADER>(0)->e_lfanew);
        const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        for (const auto* from = at<IMAGE_IMPORT_DESCRIPTOR>(directory.VirtualAddress); from->Name != 0; ++from) {
            const auto* names = at<IMAGE_THUNK_DATA>(from->OriginalFirstThunk);
            for (auto* slot = at<DWORD>(from->FirstThunk); names->u1.AddressOfData != 0; ++names, ++slot) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
                const char* const found = at<IMAGE_IMPORT_BY_NAME>(names->u1.AddressOfData)->Name;
                if (std::strcmp(found, name) == 0) slot_ = slot;
            }
        }
    }
    bool found() const { return slot_ != nullptr; }
    template <class Function>
    void set(Function* function) {
        DWORD before = 0;
        VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &before);
        *slot_ = reinterpret_cast<DWORD>(function);
    }

  private:
    template <class T, class Offset>
    T* at(Offset offset) const {
        return reinterpret_cast<T*>(base_ + offset);
    }

    char* base_;
    DWORD* slot_ = nullptr;
};

#endif
