#include "suite/shellhost/command.h"

namespace {
constexpr Command CommandTable[] = {
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
