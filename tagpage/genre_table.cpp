#include "tagpage/genre_list.h"

// The spellings are those of the published list, its slips included.
// clang-format off
const char GenreTable[][GenreNameRoom] = {
    "Blues", "Classic Rock", "Country", "Dance", "Disco", // 0
    "Funk", "Grunge", "Hip-Hop", "Jazz", "Metal", // 5
    "New Age", "Oldies", "Other", "Pop", "R&B", // 10
    "Rap", "Reggae", "Rock", "Techno", "Industrial", // 15
    "Alternative", "Ska", "Death Metal", "Pranks", "Soundtrack", // 20
    "Euro-Techno", "Ambient", "Trip-Hop", "Vocal", "Jazz+Funk", // 25
    "Fusion", "Trance", "Classical", "Instrumental", "Acid", // 30
    "House", "Game", "Sound Clip", "Gospel", "Noise", // 35
    "AlternRock", "Bass", "Soul", "Punk", "Space", // 40
    "Meditative", "Instrumental Pop", "Instrumental Rock", "Ethnic", "Gothic", // 45
    "Darkwave", "Techno-Industrial", "Electronic", "Pop-Folk", "Eurodance", // 50
    "Dream", "Southern Rock", "Comedy", "Cult", "Gangsta", // 55
    "Top 40", "Christian Rap", "Pop/Funk", "Jungle", "Native American", // 60
    "Cabaret", "New Wave", "Psychadelic", "Rave", "Showtunes", // 65
    "Trailer", "Lo-Fi", "Tribal", "Acid Punk", "Acid Jazz", // 70
    "Polka", "Retro", "Musical", "Rock & Roll", "Hard Rock", // 75
    "Folk", "Folk-Rock", "National Folk", "Swing", "Fast Fusion", // 80
    "Bebob", "Latin", "Revival", "Celtic", "Bluegrass", // 85
    "Avantgarde", "Gothic Rock", "Progressive Rock", "Psychedelic Rock", "Symphonic Rock", // 90
    "Slow Rock", "Big Band", "Chorus", "Easy Listening", "Acoustic", // 95
    "Humour", "Speech", "Chanson", "Opera", "Chamber Music", // 100
    "Sonata", "Symphony", "Booty Bass", "Primus", "Porn Groove", // 105
    "Satire", "Slow Jam", "Club", "Tango", "Samba", // 110
    "Folklore", "Ballad", "Power Ballad", "Rhythmic Soul", "Freestyle", // 115
    "Duet", "Punk Rock", "Drum Solo", "Acapella", "Euro-House", // 120
    "Dance Hall", // 125
    "",
};
// clang-format on
