#include "codec/tag_exchange.h"
#include "tagpage/changed_elements.h"
#include "tagpage/combined_set.h"
#include "tagpage/genre_list.h"
#include "tagpage/id_tag_page.h"
#include "tagpage/rating_forms.h"
#include "toolkit/wait_cursor.h"

#include <shlobj.h>

namespace {
void Delete(const clTagSet& set) {
    // 3.1.
    if (set.DeleteAll)
        RunDelTagElements(set.Name.Text, NStringList());
    // 3.2.
    if (set.DeleteNames.Count > 0)
        RunDelTagElements(set.Name.Text, set.DeleteNames);
}

// What the file holds once the deletions are done; nothing if it can't be read.
void ReadPresent(const NString& path, clTagRecord& present) {
    // 3.3.
    NBuffer reply;
    RunGetAudioInf(path.Text, reply);
    // 3.4. Nothing is filtered out here: wanted.
    if (reply.Size > 0)
        present.Deserialise(reply.Data, static_cast<int>(reply.Size));
    RatingsToDisplay(present);
}

// Each path begins with a line end, so that an empty line is above the first:
// wanted.
void AddFailure(const NString& path, NString& failures) {
    failures.Append(L"\r\n  ");
    failures.Append(path);
}

void ShowFailures(const NString& failures) {
    NString text(L"Unable to write ID Tags for:\r\n");
    text.Append(failures);
    MessageBoxW(nullptr, text.Text, L"Tonewright", MB_ICONERROR | MB_TOPMOST);
}
} // namespace

void clIDTagPage::Commit() {
    const NCallCount::Call call(&calls_);
    if (!IsInUse())
        return;
    // 1.
    StoreEdits();
    // 2. and 7.
    const WaitCursor waiting;
    // 3.
    NString failures;
    for (int index = 0; index < TagSets.Count(); ++index) {
        clTagSet& set = *TagSets[index];
        if (set.Name != CombinedName && !CommitFile(set))
            AddFailure(set.Name, failures);
    }
    // 5. A file that failed has its deletions behind it, too: wanted. The user
    // may ask for others while the box of step 4 stands.
    ForgetDeletions();
    // 4. The window may go meanwhile, and the rows with it.
    if (!failures.IsEmpty())
        ShowFailures(failures);
    // 6.
    LearnGenres();
}

// False if the file could not be written, also for a lack of memory.
bool clIDTagPage::CommitFile(clTagSet& set) try {
    // 3.1. and 3.2.
    Delete(set);
    // 3.3. and 3.4.
    clTagRecord present;
    ReadPresent(set.Name, present);
    // 3.5.
    clTagRecord changed;
    AddChangedElements(set.Tags, present, changed);
    // 3.6.
    if (changed.Count() == 0)
        return true;
    RatingsToFile(changed);
    const bool written = RunSetTags(set.Name.Text, changed);
    // Also if it failed: wanted.
    SHChangeNotify(SHCNE_UPDATEITEM, SHCNF_PATHW, set.Name.Text, nullptr);
    return written;
} catch (...) {
    return false;
}

void clIDTagPage::ForgetDeletions() {
    for (int index = 0; index < TagSets.Count(); ++index) {
        clTagSet& set = *TagSets[index];
        set.DeleteAll = 0;
        set.DeleteNames.Clear();
    }
}

// What the rows say as they stand, DifferentMark too; and the name is spelt so:
// wanted.
void clIDTagPage::LearnGenres() {
    for (int index = 0; index < ValueList.rows.Count(); ++index) {
        const NValueRow& row = *ValueList.rows[index];
        if (row.name.Compare(L"gEnre", 0, true) == 0 && row.kind == ComboEdit &&
            !row.value.IsEmpty())
            AddGenreToFile(row.value);
    }
}
