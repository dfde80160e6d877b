#include "suite/querytrackdata/file_traits.h"

#include "foundation/nbuffer.h"
#include "foundation/unique_handle.h"

#include <cstring>

namespace {

// Those that SetFileAttributesW takes; the others are matters of the volume.
constexpr DWORD SettableAttributes = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN |
                                     FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_OFFLINE |
                                     FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM |
                                     FILE_ATTRIBUTE_TEMPORARY;

constexpr SECURITY_INFORMATION AccessListAndOwner =
    DACL_SECURITY_INFORMATION | OWNER_SECURITY_INFORMATION;

uint64_t Combine(DWORD high, DWORD low) {
    return static_cast<uint64_t>(high) << 32 | low;
}

uint64_t Combine(const FILETIME& time) {
    return Combine(time.dwHighDateTime, time.dwLowDateTime);
}

// False on a volume that keeps no access lists.
bool GetSecurity(const NString& path, NBuffer& descriptor) {
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), AccessListAndOwner, nullptr, 0, &size);
    if (size == 0)
        return false;
    descriptor.Resize(size);
    return GetFileSecurityW(path.c_str(), AccessListAndOwner, descriptor.Data, size, &size) !=
           FALSE;
}

// Without this request the system would drop the mark of an access list whose
// entries were inherited.
void KeepInheritance(PSECURITY_DESCRIPTOR descriptor) {
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (GetSecurityDescriptorControl(descriptor, &control, &revision) &&
        (control & SE_DACL_AUTO_INHERITED) != 0)
        SetSecurityDescriptorControl(descriptor, SE_DACL_AUTO_INHERIT_REQ,
                                     SE_DACL_AUTO_INHERIT_REQ);
}

} // namespace

bool GetFileState(HANDLE file, FileState& state) {
    BY_HANDLE_FILE_INFORMATION information;
    if (!GetFileInformationByHandle(file, &information))
        return false;
    state.Volume = information.dwVolumeSerialNumber;
    state.Id = Combine(information.nFileIndexHigh, information.nFileIndexLow);
    state.Size = Combine(information.nFileSizeHigh, information.nFileSizeLow);
    state.LastWrite = Combine(information.ftLastWriteTime);
    state.Creation = Combine(information.ftCreationTime);
    state.Attributes = information.dwFileAttributes;
    return true;
}

bool GetFileState(const NString& path, FileState& state) {
    UniqueFileHandle file(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file && GetFileState(file.Get(), state);
}

bool IsSameContent(const FileState& before, const FileState& now) {
    return before.Volume == now.Volume && before.Id == now.Id && before.Size == now.Size &&
           before.LastWrite == now.LastWrite;
}

bool CarryAttributes(const FileState& original, const NString& copy) {
    DWORD attributes = original.Attributes & SettableAttributes;
    return SetFileAttributesW(copy.c_str(), attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL) !=
           FALSE;
}

bool CarryCreationTime(const FileState& original, HANDLE copy) {
    FILETIME creation;
    creation.dwLowDateTime = static_cast<DWORD>(original.Creation);
    creation.dwHighDateTime = static_cast<DWORD>(original.Creation >> 32);
    return SetFileTime(copy, &creation, nullptr, nullptr) != FALSE;
}

bool CarryAccessList(const NString& original, const NString& copy) {
    NBuffer wanted, present;
    if (!GetSecurity(original, wanted))
        return true;
    if (GetSecurity(copy, present) && present.Equals(wanted))
        return true;
    // Only a privileged user may give a file away; the access list counts.
    SetFileSecurityW(copy.c_str(), OWNER_SECURITY_INFORMATION, wanted.Data);
    KeepInheritance(wanted.Data);
    return SetFileSecurityW(copy.c_str(), DACL_SECURITY_INFORMATION, wanted.Data) != FALSE;
}
