// Feeds bytes to clTagRecord::Deserialise. What it accepts must survive a
// round trip: serialised and parsed again, it is the same record.
#include "codec/tag_record.h"

#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    clTagRecord record;
    record.Deserialise(data, static_cast<int>(size));

    NBuffer first;
    record.Serialise(first);
    clTagRecord again;
    again.Deserialise(first.Data, static_cast<int>(first.Size));
    NBuffer second;
    again.Serialise(second);
    if (again.Count() != record.Count() || !first.Equals(second))
        abort();

    NString description;
    record.FindAlbumArt(1, description);
    record.RemoveSpecial(clTagRecord::KeepAlbumArt);
    return 0;
}
