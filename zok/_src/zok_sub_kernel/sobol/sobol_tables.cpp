// SPDX-License-Identifier: MIT
// Polynomials and initial numbers of the Sobol sequence in 40 dimensions: P. Bratley and B. Fox,
// Algorithm 659, ACM Transactions on Mathematical Software 14 (1988), but for nine numbers that
// S. Joe and F. Kuo mended (Remark on Algorithm 659, ibid. 29, 2003), so that property A holds in
// all dimensions: number 6 of dimension 21 (59 for 27), 3 of 23 (7 for 3), 2 of 27 (1 for 3), 3 of
// 29 (7 for 3), 3 of 31 (1 for 5), 2 of 33 (3 for 1), 4 of 37 (11 for 3), 2 of 38 (1 for 3) and 5
// of 40 (25 for 9).
#include <orv/zok.h>

// Of dimensions 2 to 40, as are the others.
const uint32_t uSobolIrredPoly[39] = {
    0x3,  0x7,  0xB,  0xD,  0x13, 0x19, 0x25, 0x3B, 0x2F, 0x3D, 0x37,  0x29,  0x43,
    0x61, 0x5B, 0x6D, 0x67, 0x73, 0x83, 0xC1, 0x89, 0x91, 0x8F, 0xF1,  0x9D,  0xB9,
    0xA7, 0xE5, 0xAB, 0xD5, 0xBF, 0xFD, 0xCB, 0xD3, 0xEF, 0xF7, 0x11D, 0x171, 0x12B,
};

const int32_t iSobolIrredPolyDeg[39] = {
    1, 2, 3, 3, 4, 4, 5, 5, 5, 5, 5, 5, 6, 6, 6, 6, 6, 6, 7, 7,
    7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 8, 8, 8,
};

const uint32_t uSobolMInit[39][8] = {
    {1},
    {1, 1},
    {1, 3, 7},
    {1, 1, 5},
    {1, 3, 1, 1},
    {1, 1, 3, 7},
    {1, 3, 3, 9, 9},
    {1, 3, 7, 13, 3},
    {1, 1, 5, 11, 27},
    {1, 3, 5, 1, 15},
    {1, 1, 7, 3, 29},
    {1, 3, 7, 7, 21},
    {1, 1, 1, 9, 23, 37},
    {1, 3, 3, 5, 19, 33},
    {1, 1, 3, 13, 11, 7},
    {1, 1, 7, 13, 25, 5},
    {1, 3, 5, 11, 7, 11},
    {1, 1, 1, 3, 13, 39},
    {1, 3, 1, 15, 17, 63, 13},
    {1, 1, 5, 5, 1, 59, 33},
    {1, 3, 3, 3, 25, 17, 115},
    {1, 1, 7, 15, 29, 15, 41},
    {1, 3, 1, 7, 3, 23, 79},
    {1, 3, 7, 9, 31, 29, 17},
    {1, 1, 5, 13, 11, 3, 29},
    {1, 1, 1, 9, 5, 21, 119},
    {1, 1, 3, 1, 23, 13, 75},
    {1, 3, 7, 11, 27, 31, 73},
    {1, 1, 7, 7, 19, 25, 105},
    {1, 3, 1, 5, 21, 9, 7},
    {1, 1, 1, 15, 5, 49, 59},
    {1, 3, 1, 1, 1, 33, 65},
    {1, 3, 5, 15, 17, 19, 21},
    {1, 1, 7, 11, 13, 29, 3},
    {1, 3, 7, 5, 7, 11, 113},
    {1, 1, 5, 11, 15, 19, 61},
    {1, 1, 1, 1, 9, 27, 89, 7},
    {1, 1, 3, 7, 31, 15, 45, 23},
    {1, 3, 3, 9, 25, 25, 107, 39},
};
