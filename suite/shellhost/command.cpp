#include "suite/shellhost/command.h"

namespace {
constexpr Command CommandTable[] = {
    {L"menu", L"menu FILE...", L"shows the context menu's items for the files", 1, RunMenuCommand},
    {L"invoke", L"invoke VERB FILE...",
     L"runs a command of the context menu, by its verb or its number", 2, RunInvokeCommand},
    {L"rows", L"rows FILE...", L"shows the rows of the page Audio Properties for the files", 1,
     RunRowsCommand},
    {L"covers", L"covers FILE --to FOLDER",
     L"writes the file's covers, as that page frames them, as PNG files", 3, RunCoversCommand},
    {L"properties", L"properties FILE... [OPTION...]",
     L"opens the files' property sheet, at --page 2 the other page; --picture PNG writes a picture",
     1, RunPropertiesCommand},
    {L"tags", L"tags FILE...", L"shows the tag of each file", 1, RunTagsCommand},
    {L"set", L"set FILE NAME=VALUE...",
     L"sets elements; a NAME given twice gets two values; _albumart_1=@FILE is a picture", 2,
     RunSetCommand},
    {L"delete", L"delete FILE [NAME...]", L"deletes elements, or the whole tag", 1,
     RunDeleteCommand},
};
} // namespace

std::span<const Command> Commands() {
    return CommandTable;
}
