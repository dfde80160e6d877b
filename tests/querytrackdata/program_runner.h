#pragma once

#include "codec/tag_record.h"
#include "foundation/unique_handle.h"
#include "tests/querytrackdata/test_files.h"

#include <string>
#include <vector>

struct ProgramRun {
    DWORD ExitCode = 0;
    std::string Error; // what it wrote to standard error
};

// A program that was started, with its standard error going to a file.
class StartedProgram {
public:
    StartedProgram(const std::wstring& commandLine, const std::wstring& errorFile);
    // True if the program has ended within so many milliseconds.
    bool EndsWithin(DWORD milliseconds) const;
    void Kill() const;
    // Waits for the end.
    ProgramRun Finish() const;

private:
    std::wstring errorFile_;
    UniqueKernelHandle process_;
};

// The tag program as the module drives it: an exchange file, which stays open
// for the time of the run, and one option. The files lie in a folder apart
// from the audio files.
class TagProgram {
public:
    explicit TagProgram(const std::wstring& program = ShippedProgram());
    static std::wstring ShippedProgram();

    ProgramRun Run(const std::wstring& arguments) const;
    // `exchange` is the request, and gets what the file holds after the run.
    ProgramRun Exchange(const wchar_t* option, Bytes& exchange) const;
    // The record stays empty without a reply.
    ProgramRun Read(const std::wstring& audioFile, clTagRecord& record) const;
    ProgramRun Set(const std::wstring& audioFile, clTagRecord& changes) const;
    // No names: the whole tag.
    ProgramRun Delete(const std::wstring& audioFile, const std::vector<std::wstring>& names) const;
    StartedProgram Start(const wchar_t* option, const Bytes& request) const;

private:
    std::wstring CommandLine(const std::wstring& arguments) const;

    std::wstring program_;
    TestFolder folder_;
};

inline constexpr wchar_t ReadOption[] = L"--GetAudioInf";
inline constexpr wchar_t SetOption[] = L"--SetTags";
inline constexpr wchar_t DeleteOption[] = L"--DelTagElements";

Bytes SetRequestOf(clTagRecord& changes, const std::wstring& audioFile);
Bytes DeleteRequestOf(const std::vector<std::wstring>& names, const std::wstring& audioFile);

// The first value of that name; empty when there is none.
std::wstring ValueOf(clTagRecord& record, const wchar_t* name);
std::wstring ValueIn(const std::wstring& audioFile, const wchar_t* name);

// The path of a sample file of tools/make-samples.
std::wstring SamplePath(const std::string& name);
Bytes Sample(const std::string& name);
