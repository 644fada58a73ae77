// SPDX-License-Identifier: MIT
// The registry: a row for each generator, made at build time, and rows that users add.
#include "abstract.hpp"
#include "registry.hpp"

using namespace orv;

namespace {

template <class T>
constexpr int32_t abstract_size = sizeof(StreamState) + sizeof(AbstractState<T>);

#define ENTRIES(name) \
  __zokBRng##name##InitStream, __zoksBRng##name, __zokdBRng##name, __zokiBRng##name

// State size, seeds, exact zero, word size, bits.
constexpr BrngProperties mcg31m1 = {24, 1, 0, 4, 31, ENTRIES(MCG31M1)};
constexpr BrngProperties r250 = {1024, 252, 1, 4, 32, ENTRIES(R250)};
constexpr BrngProperties mrg32k3a = {40, 6, 1, 4, 32, ENTRIES(MRG32K3A)};
constexpr BrngProperties mcg59 = {32, 1, 0, 8, 59, ENTRIES(MCG59)};
constexpr BrngProperties wh = {48, 4, 1, 16, 24, ENTRIES(WH)};
constexpr BrngProperties sobol = {10592, 2604, 0, 4, 32, ENTRIES(Sobol)};
constexpr BrngProperties niederr = {43280, 10498, 0, 4, 32, ENTRIES(Niederr)};
constexpr BrngProperties mt19937 = {2516, 625, 1, 4, 32, ENTRIES(MT19937)};
constexpr BrngProperties mt2203 = {308, 70, 1, 4, 32, ENTRIES(MT2203)};
constexpr BrngProperties iabstract = {abstract_size<uint32_t>, 0, 1, 4, 32, ENTRIES(iAbstract)};
constexpr BrngProperties dabstract = {abstract_size<double>, 0, 1, 4, 32, ENTRIES(dAbstract)};
constexpr BrngProperties sabstract = {abstract_size<float>, 0, 1, 4, 32, ENTRIES(sAbstract)};
constexpr BrngProperties sfmt19937 = {2536, 625, 1, 16, 128, ENTRIES(SFMT19937)};

#undef ENTRIES

}  // namespace

#define THREE(...) __VA_ARGS__, __VA_ARGS__, __VA_ARGS__
#define SEVEN(...) THREE(__VA_ARGS__), THREE(__VA_ARGS__), __VA_ARGS__
#define THIRTEEN(...) SEVEN(__VA_ARGS__), THREE(__VA_ARGS__), THREE(__VA_ARGS__)

// The low identifiers, each its row's number; WH has 273 of them.
constinit BrngProperties __RegBrngs[512] = {
    mcg31m1, r250, mrg32k3a, mcg59, THREE(SEVEN(THIRTEEN(wh))), sobol, niederr,
};
int32_t NRegBrngs = 279;

#undef THREE
#undef SEVEN
#undef THIRTEEN

// The high identifiers, in the order of the BRNG_ constants.
constinit BrngProperties __RegBrngsNew[512] = {
    mcg31m1, r250,   mrg32k3a,  mcg59,     wh,        sobol,     niederr,
    mt19937, mt2203, iabstract, dabstract, sabstract, sfmt19937,
};
int32_t NRegBrngsNew = 13;
int32_t NumOffsets[512] = {1, 1, 1, 1, 273, 1, 1, 1, 1024, 1, 1, 1, 1};

int32_t __zokRegisterBrng(const BrngProperties* properties) {
  const BrngProperties& p = *properties;
  if (p.StateSize < 0) return RNG_BAD_STATE_SIZE;
  if (p.WordSize != 4 && p.WordSize != 8 && p.WordSize != 16) return RNG_BAD_WORD_SIZE;
  if (p.NumSeeds < 1) return RNG_BAD_NSEEDS;
  if (p.NumBits < 1) return RNG_BAD_NBITS;
  if (p.dBRng == nullptr || p.sBRng == nullptr || p.iBRng == nullptr || p.InitStream == nullptr) {
    return RNG_NULL_ENTRY;
  }
  const int32_t row = NRegBrngsNew++;
  NumOffsets[row] = 1;
  __RegBrngsNew[row] = p;
  return (row + 1) * row_step;
}

int32_t __zokGetBrngProperties(int32_t brng, BrngProperties* properties) {
  int32_t row, offset;
  const BrngProperties* const table = __zokGetBrngBaseOffset(brng, &row, &offset);
  const int32_t status = __zokIsBrngValid(table, row, offset);
  if (status < 0) return status;
  *properties = table[row];
  return RNG_OK;
}

int32_t __zokGetNumRegBrngs() { return NRegBrngsNew; }
