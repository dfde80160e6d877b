#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "toolkit/nbitmap.h"
#include "toolkit/ncanvas.h"

// The covers of one file as finished pictures: a disc case of 99 by 90 pixels
// (resource `ArtFrame`) with the cover in its opening.

// Empties `list`, and adds one picture for each cover of `tags`. A cover that
// can't be loaded leaves the opening grey; one of less than 9 bytes counts for
// none. Without a cover the list gets the bare case.
void BuildAlbumArt(NKeyedList<NCanvas>& list, clTagRecord& tags);

// Takes a border of one pixel off `bitmap`, and 2 from each of the measures
// (pixels), if all pixels of that border are dark. `bitmap` is
// selected into its own device context, before as after.
void TrimDarkBorder(NCanvas& bitmap, double& width, double& height);
