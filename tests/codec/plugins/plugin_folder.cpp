#include "tests/codec/plugins/plugin_folder.h"

#include "foundation/nfile.h"

#include <stdexcept>

namespace {
void CopyPlugin(const wchar_t* built, const NString& to) {
    NString from(TONEWRIGHT_TEST_PLUGINS "/");
    from.Append(built);
    if (!CopyFileW(from.Text, to.Text, FALSE))
        throw std::runtime_error("a test plug-in isn't there");
}
} // namespace

PluginFolder::PluginFolder() {
    // Any library is good for the module, since only its path is asked.
    NString path = folder_.File(L"module.dll");
    CopyPlugin(L"whole_plugin.dll", path);
    module_.Reset(LoadLibraryW(path.Text));
    if (!module_)
        throw std::runtime_error("the module can't be loaded");
    CreateDirectoryW(folder_.File(L"decoder").Text, nullptr);
}

NString PluginFolder::PathOf(const wchar_t* name) const {
    NString path(L"decoder\\");
    path.Append(name);
    return folder_.File(path.Text);
}

NString PluginFolder::Add(const wchar_t* name, const wchar_t* built) {
    NString path = PathOf(name);
    CopyPlugin(built, path);
    return path;
}

void PluginFolder::AddPlainFile(const wchar_t* name) {
    NFile file(PathOf(name), GENERIC_WRITE, CREATE_ALWAYS, false, true);
    file.Write("not a library", 13, NFile::NoSeek);
}

void PluginFolder::AddFolder(const wchar_t* name) {
    CreateDirectoryW(PathOf(name).Text, nullptr);
}
