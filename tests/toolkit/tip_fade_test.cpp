#include "toolkit/tip_fade.h"

#include <gtest/gtest.h>

TEST(TipFade, TakesTheLastThirdButNotMoreThanTwoAndAHalfSeconds) {
    struct Row {
        uint32_t duration;
        uint32_t fade;
    };
    const Row rows[] = {{0, 0},       {2, 0},       {3, 1},        {3000, 1000},      {7499, 2499},
                        {7500, 2500}, {7503, 2500}, {30000, 2500}, {0xFFFFFFFE, 2500}};
    for (const Row& row : rows)
        EXPECT_EQ(row.fade, TipFadeTime(row.duration)) << row.duration;
}

TEST(TipFade, GoesFromOpaqueToNothingInTheFadesTime) {
    struct Row {
        uint32_t elapsed;
        uint32_t duration;
        int32_t alpha;
    };
    const Row rows[] = {
        {0, 30000, 255},     {27499, 30000, 255},
        {27500, 30000, 255}, {27509, 30000, 255}, // 9 * 255 / 2500 is still 0
        {27510, 30000, 254}, {28750, 30000, 128},
        {30000, 30000, 0},   {1999, 3000, 255},
        {2000, 3000, 255},   {2003, 3000, 255},
        {2004, 3000, 254},   {2500, 3000, 128},
        {3000, 3000, 0},     {0xFFFFFFFE, 0xFFFFFFFE, 0},
        {2, 3, 255},         {3, 3, 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.alpha, TipAlpha(row.elapsed, row.duration))
            << row.elapsed << " of " << row.duration;
}

TEST(TipFade, ATipWithoutTimeToFadeStaysOpaque) {
    for (uint32_t duration : {0u, 1u, 2u})
        for (uint32_t elapsed = 0; elapsed <= duration; ++elapsed)
            EXPECT_EQ(255, TipAlpha(elapsed, duration)) << elapsed << " of " << duration;
}
