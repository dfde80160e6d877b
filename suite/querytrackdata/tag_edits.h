#pragma once

#include "codec/tag_record.h"
#include "foundation/nbuffer.h"
#include "foundation/nlists.h"
#include "suite/querytrackdata/safe_write.h"
#include "suite/tagmap/tag_values.h"

// The three requests in terms of suite/tagmap, with the reason of a failure as
// the error line tells it.

// `reply` gets the serialised record of the file's tag.
bool ReadTagsOf(const NString& audioFile, NBuffer& reply, ErrorLine& error);

// Sets the elements of `changes`. What is handed in must outlive this;
// `audioFile` is how the request names the file.
class SetEdit : public FileEdit {
public:
    SetEdit(const NString& audioFile, clTagRecord& changes)
        : audioFile_(audioFile), changes_(changes) {}
    bool IsDone(const wchar_t* file) override;
    bool Apply(const wchar_t* copy, ErrorLine& error) override;
    bool Check(const wchar_t* original, const wchar_t* copy, ErrorLine& error) override;

    // The names of what the file's format couldn't hold; empty before Apply.
    const NStringList& Refused() const { return refused_.Names(); }

private:
    const NString& audioFile_;
    clTagRecord& changes_;
    tagmap::Refusals refused_;
};

// Deletes the elements of these names, or with none the whole tag. As above.
class DeleteEdit : public FileEdit {
public:
    DeleteEdit(const NString& audioFile, const NStringList& names)
        : audioFile_(audioFile), names_(names) {}
    bool IsDone(const wchar_t* file) override;
    bool Apply(const wchar_t* copy, ErrorLine& error) override;
    bool Check(const wchar_t* original, const wchar_t* copy, ErrorLine& error) override;

private:
    const NString& audioFile_;
    const NStringList& names_;
};
