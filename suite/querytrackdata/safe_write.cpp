#include "suite/querytrackdata/safe_write.h"

#include "suite/querytrackdata/audio_file_handle.h"
#include "suite/querytrackdata/disk_change.h"
#include "suite/querytrackdata/file_traits.h"
#include "suite/querytrackdata/full_path.h"
#include "suite/querytrackdata/writer_lock.h"

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A virus scanner may hold a file for a moment after it was written.
constexpr int MoveAttempts = 10;
constexpr DWORD MovePause = 50; // milliseconds

// Longer ones are no extensions of audio files, and could make the name of a
// copy too long.
constexpr int MaxExtension = 16;

NString ExtensionOf(const NString& name) {
    int dot = name.FindLastChar(L'.');
    NString extension = dot != 0 ? name.From(dot) : NString();
    return extension.CharCount() <= MaxExtension ? extension : NString();
}

bool Exists(const NString& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool RemoveFile(const NString& path) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    AfterDiskChange();
    bool removed = DeleteFileW(path.c_str()) != FALSE;
    AfterDiskChange();
    return removed;
}

DWORD CALLBACK CopyProgress(LARGE_INTEGER, LARGE_INTEGER, LARGE_INTEGER, LARGE_INTEGER, DWORD,
                            DWORD, HANDLE, HANDLE, LPVOID) {
    AfterDiskChange();
    return PROGRESS_CONTINUE;
}

// The copy that is worked on; removed with this object, unless it was put in
// the file's place.
class WorkingCopy {
public:
    explicit WorkingCopy(const NString& path) : path_(path) {}
    WorkingCopy(const WorkingCopy&) = delete;
    WorkingCopy& operator=(const WorkingCopy&) = delete;
    ~WorkingCopy() {
        if (present_)
            RemoveFile(path_);
    }

    const NString& Path() const { return path_; }

    // Removes what a killed writer left.
    bool RemoveLeftover() { return !Exists(path_) || RemoveFile(path_); }

    // Further streams and attributes come along with the content.
    bool Make(const NString& original) {
        bool copied = CopyFileExW(original.c_str(), path_.c_str(), CopyProgress, nullptr, nullptr,
                                  COPY_FILE_FAIL_IF_EXISTS) != FALSE;
        // A copy that fails half way may leave a part.
        present_ = copied || GetLastError() != ERROR_FILE_EXISTS;
        AfterDiskChange();
        return copied;
    }

    // `mayReplace` is asked in front of each attempt: whoever made an attempt
    // fail may have changed the file by the next.
    template <typename Question>
    bool MoveOver(const NString& original, Question mayReplace) {
        for (int attempt = 1;; ++attempt) {
            if (!mayReplace())
                return false;
            if (MoveFileExW(path_.c_str(), original.c_str(),
                            MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
                present_ = false;
                AfterDiskChange();
                return true;
            }
            DWORD systemError = GetLastError();
            bool busy =
                systemError == ERROR_ACCESS_DENIED || systemError == ERROR_SHARING_VIOLATION;
            if (!busy || attempt == MoveAttempts)
                return false;
            BeforeMoveRetry();
            Sleep(MovePause);
        }
    }

private:
    NString path_;
    bool present_ = false;
};

// One write, told step by step.
class SafeWrite {
public:
    SafeWrite(const wchar_t* file, FileEdit& edit, ErrorLine& error)
        : given_(file), edit_(edit), error_(error) {}

    bool Run() {
        // 1. Find the file itself, and become its only writer.
        if (!FindRealFile() || !TakeLock())
            return false;
        WorkingCopy copy(WorkingCopyPath(realPath_));
        // 2. Hold the file, so that nobody changes it under the copy.
        if (!HoldOriginal())
            return false;
        // 3. Remove what a killed writer left. It is no living writer's, on
        // another machine, for that one would hold the file.
        if (!copy.RemoveLeftover())
            return Fail(L"cannot remove an earlier copy of the audio file");
        // 4. Leave alone what is right already.
        if (edit_.IsDone(realPath_.c_str()))
            return true;
        // 5. Make the copy, change it, and look whether it came out right.
        if (!MakeCopy(copy) || !edit_.Apply(copy.Path().c_str(), error_))
            return false;
        // Asked again, now that the edit knows what the format refuses: a request
        // of nothing else leaves the file alone.
        if (edit_.IsDone(realPath_.c_str()))
            return true;
        if (!edit_.Check(realPath_.c_str(), copy.Path().c_str(), error_))
            return false;
        // 6. Give it all else that the file has, and bring it to the disk.
        if (!FinishCopy(copy))
            return false;
        // 7. Put it in the file's place.
        return PutInPlace(copy);
    }

private:
    // GetLastError must be the failed call's.
    bool Fail(const wchar_t* what) { return error_.Fail(what, given_, GetLastError()); }

    bool FindRealFile() {
        return static_cast<bool>(
            OpenAudioFile(given_, FILE_READ_ATTRIBUTES, ShareAll, realPath_, error_));
    }

    bool TakeLock() {
        return lock_.Take(realPath_, WriterPatience) ||
               error_.Fail(L"another writer is at work on the audio file", given_);
    }

    // A replacing move asks less of the user's rights than a write does: this
    // looks first whether the file itself may be written and deleted, now and
    // by this user. It also fails while anyone has it open who doesn't allow
    // that.
    bool HoldOriginal() {
        if (!OpenRealFile(realPath_, GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ))
            return Fail(L"cannot write the audio file");
        original_ = OpenRealFile(realPath_, GENERIC_READ, FILE_SHARE_READ);
        if (!original_ || !GetFileState(original_.Get(), before_))
            return Fail(L"cannot read the audio file");
        if ((before_.Attributes & FILE_ATTRIBUTE_READONLY) != 0)
            return error_.Fail(L"the audio file is read-only", given_);
        return true;
    }

    // The access list comes before the change: a private file's copy is to be
    // private as well.
    bool MakeCopy(WorkingCopy& copy) {
        if (!copy.Make(realPath_))
            return Fail(L"cannot copy the audio file");
        if (!CarryAccessList(realPath_, copy.Path()))
            return Fail(L"cannot copy the access list of the audio file");
        AfterDiskChange();
        SetFileAttributesW(copy.Path().c_str(), FILE_ATTRIBUTE_HIDDEN);
        AfterDiskChange();
        return true;
    }

    bool FinishCopy(WorkingCopy& copy) {
        UniqueFileHandle file = OpenRealFile(copy.Path(), GENERIC_READ | GENERIC_WRITE, 0);
        if (!file || !CarryCreationTime(before_, file.Get()))
            return Fail(L"cannot date the copy of the audio file");
        AfterDiskChange();
        if (!FlushFileBuffers(file.Get()))
            return Fail(L"cannot flush the copy of the audio file");
        AfterDiskChange();
        file.Reset();
        if (!CarryAttributes(before_, copy.Path()))
            return Fail(L"cannot copy the attributes of the audio file");
        AfterDiskChange();
        return true;
    }

    bool PutInPlace(WorkingCopy& copy) {
        original_.Reset(); // no file that is open can be replaced
        const bool moved = copy.MoveOver(realPath_, [this] {
            FileState now;
            return (GetFileState(realPath_, now) && IsSameContent(before_, now)) ||
                   error_.Fail(L"the audio file was changed in the meantime", given_);
        });
        return moved || Fail(L"cannot replace the audio file");
    }

    const wchar_t* given_;
    FileEdit& edit_;
    ErrorLine& error_;
    NString realPath_;
    WriterLock lock_;
    UniqueFileHandle original_;
    FileState before_{};
};

} // namespace

bool WriteSafely(const wchar_t* file, FileEdit& edit, ErrorLine& error) {
    return SafeWrite(file, edit, error).Run();
}

NString WorkingCopyPath(const NString& realPath) {
    NString path = FolderOf(realPath);
    NString name = NameOf(realPath);
    path.Append(L"~tnw");
    path.Append(HashDigits(name));
    path.Append(ExtensionOf(name));
    return path;
}
