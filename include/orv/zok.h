/* SPDX-License-Identifier: MIT */
/* Random streams: one object for every basic generator, a registry of generators, and
 * distributions.
 *
 *     StreamState* stream;
 *     __zokNewStreamEx(&stream, BRNG_MT19937, 1, &seed);
 *     _zokdRngUniform(0, stream, n, r, 0.0, 1.0);
 *     __zokDeleteStream(&stream);
 *
 * Every function returns a status, RNG_OK or one of the negative codes below, unless said
 * otherwise. A stream has one user at a time; different streams are independent. The sequence of a
 * stream does not depend on how it is asked for: any split of a request into parts of one element
 * or more gives the same numbers. A request for n below 1 delivers nothing, unless the generator is
 * MCG31M1 or R250: these make one element, for which r must have room, and the stream moves on. */
#ifndef ORV_ZOK_H
#define ORV_ZOK_H

#include <stdint.h>

#ifndef ORV_API
#define ORV_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Status codes. */
enum {
  RNG_OK = 0,
  RNG_BAD_METHOD = -2,
  RNG_BAD_ARGS = -3,
  RNG_NO_MEMORY = -4,
  RNG_NULL_ENTRY = -5,
  RNG_INVALID_BRNG = -1000,
  RNG_LEAPFROG_UNSUPPORTED = -1002,
  RNG_SKIPAHEAD_UNSUPPORTED = -1003,
  RNG_BRNGS_INCOMPATIBLE = -1005,
  RNG_BAD_STATE_SIZE = -1008,
  RNG_BAD_WORD_SIZE = -1009,
  RNG_BAD_NSEEDS = -1010,
  RNG_BAD_NBITS = -1011,
  RNG_QRNG_EXHAUSTED = -1012,
  RNG_BAD_NSTREAMS = -1013,
  RNG_FILE_CLOSE = -1100,
  RNG_FILE_OPEN = -1101,
  RNG_FILE_WRITE = -1102,
  RNG_FILE_READ = -1103,
  RNG_BAD_FILE_FORMAT = -1110,
  RNG_UNSUPPORTED_FILE_VERSION = -1111,
  RNG_ABSTRACT_BAD_COUNT = -1120,
  RNG_ABSTRACT_NO_DATA = -1121,
  RNG_ABSTRACT_BAD_FLAVOUR = -1122
};

/** Generator identifiers. BRNG_WH + 0 to 272 and BRNG_MT2203 + 0 to 1023 are families of
 * independent generators; give each a seed of its own, since members with the same one begin alike
 * for some two hundred numbers. The first four, WH and the two low-discrepancy ones also answer to
 * small numbers: 0 to 3, 4 to 276, 277, 278. */
enum {
  BRNG_MCG31M1 = 0x100000,  /**< multiplicative, modulus 2^31 - 1 (L'Ecuyer 1999) */
  BRNG_R250 = 0x200000,     /**< shift register, 250 words (Kirkpatrick and Stoll 1981) */
  BRNG_MRG32K3A = 0x300000, /**< combined multiple recursive (L'Ecuyer 1999) */
  BRNG_MCG59 = 0x400000,    /**< multiplicative, modulus 2^59 */
  BRNG_WH = 0x500000,    /**< four combined congruential (Wichmann and Hill 1982; Maclaren 1989) */
  BRNG_SOBOL = 0x600000, /**< low discrepancy, 40 dimensions (Sobol 1967) */
  BRNG_NIEDERR = 0x700000, /**< low discrepancy, 318 dimensions (Niederreiter 1988) */
  BRNG_MT19937 = 0x800000, /**< Mersenne Twister (Matsumoto and Nishimura 1998) */
  BRNG_MT2203 =
      0x900000, /**< Mersenne Twisters made for independence (Matsumoto, Nishimura 2000) */
  BRNG_IABSTRACT = 0xA00000, /**< the user's own words */
  BRNG_DABSTRACT = 0xB00000, /**< the user's own doubles */
  BRNG_SABSTRACT = 0xC00000, /**< the user's own floats */
  BRNG_SFMT19937 = 0xD00000  /**< SIMD-oriented Fast Mersenne Twister (Saito and Matsumoto 2008) */
};

/** The header of a stream's block; the generator's state follows it. */
typedef struct StreamState {
  int32_t Brng;       /**< the identifier it was created with */
  int32_t HeaderMark; /**< 1 */
  int64_t Chunks;     /**< address of the first chunk, sign-extended; 0 for none */
} StreamState;

/** Initialise (method 0: n seed words at params), leapfrog (1: n streams, index at params) or skip
 *  ahead (2: n = 2, a 64-bit count at params, low word first). */
typedef int32_t (*BrngInitStream)(int32_t method, StreamState* stream, int32_t n,
                                  const uint32_t* params);
/** n numbers on [a, b), as exact as the uniform distributions below. */
typedef int32_t (*BrngFloats)(StreamState* stream, int32_t n, float* r, float a, float b);
typedef int32_t (*BrngDoubles)(StreamState* stream, int32_t n, double* r, double a, double b);
/** n elements of the generator's WordSize bytes. */
typedef int32_t (*BrngWords)(StreamState* stream, int32_t n, uint32_t* r);

/** What the registry knows of a generator. */
typedef struct BrngProperties {
  int32_t StateSize;    /**< bytes of a stream's block, header included */
  int32_t NumSeeds;     /**< seed words that make up the state */
  int32_t IncludesZero; /**< 1 if an exact zero can come out */
  int32_t WordSize;     /**< bytes of an integer element: 4, 8 or 16 */
  int32_t NumBits;      /**< significant bits of it */
  BrngInitStream InitStream;
  BrngFloats sBRng;
  BrngDoubles dBRng;
  BrngWords iBRng;
} BrngProperties;

/* ---- Streams -------------------------------------------------------------------------------- */

/** Creates a stream from `nseeds` seed words; too few or useless seeds are repaired. If the
 *  generator's initialisation fails the block stays allocated: delete it. Abstract generators have
 *  creators of their own and are refused. Errors: RNG_INVALID_BRNG, RNG_NO_MEMORY. */
ORV_API int32_t __zokNewStreamEx(StreamState** stream, int32_t brng, int32_t nseeds,
                                 const uint32_t* seeds);

/** Allocates a stream of a generator that has been split by __zokGetBrngBaseOffset, its state not
 *  initialised. Errors: RNG_INVALID_BRNG, RNG_NO_MEMORY. */
ORV_API int32_t __zokAllocateStream(StreamState** stream, BrngProperties* table, int32_t brng,
                                    int32_t row, int32_t offset);

/** Releases a stream with its chunks and writes 0 to *stream. Where that is 0 already, nothing is
 *  done. */
ORV_API int32_t __zokDeleteStream(StreamState** stream);

/** Makes an independent copy. Errors: RNG_NO_MEMORY. */
ORV_API int32_t __zokCopyStream(StreamState** newStream, StreamState* source);

/** Copies the part of the state that seeds make up, and the chunks, between streams of one
 *  generator. RNG_BRNGS_INCOMPATIBLE is returned after the copy all the same. */
ORV_API int32_t __zokCopyStreamState(StreamState* destination, StreamState* source);

/** Makes the stream the k-th of nstreams interleaved ones. Errors: RNG_BAD_NSTREAMS,
 *  RNG_LEAPFROG_UNSUPPORTED. */
ORV_API int32_t __zokLeapfrogStream(StreamState* stream, int32_t k, int32_t nstreams);

/** Passes over nskip elements. Errors: RNG_SKIPAHEAD_UNSUPPORTED. */
ORV_API int32_t __zokSkipAheadStream(StreamState* stream, int64_t nskip);

/** The identifier that the stream was created with (no status). */
ORV_API int32_t __zokGetStreamStateBrng(StreamState* stream);

/* ---- Registry ------------------------------------------------------------------------------- */

extern ORV_API BrngProperties __RegBrngs[512];
extern ORV_API BrngProperties __RegBrngsNew[512];
extern ORV_API int32_t NRegBrngs;
extern ORV_API int32_t NRegBrngsNew;
extern ORV_API int32_t NumOffsets[512];

/** Adds a generator and returns its identifier. Errors, in this order: RNG_BAD_STATE_SIZE,
 *  RNG_BAD_WORD_SIZE, RNG_BAD_NSEEDS, RNG_BAD_NBITS, RNG_NULL_ENTRY. Not beside other registry use.
 */
ORV_API int32_t __zokRegisterBrng(const BrngProperties* properties);

/** Errors: RNG_INVALID_BRNG, and then the record is left alone. */
ORV_API int32_t __zokGetBrngProperties(int32_t brng, BrngProperties* properties);

/** How many generators are registered, the built-in ones included (no status). */
ORV_API int32_t __zokGetNumRegBrngs(void);

/** Splits an identifier into its table (returned), row and offset, without a check. */
ORV_API BrngProperties* __zokGetBrngBaseOffset(int32_t brng, int32_t* row, int32_t* offset);

/** RNG_OK or RNG_INVALID_BRNG. */
ORV_API int32_t __zokIsBrngValid(const BrngProperties* table, int32_t row, int32_t offset);

/* ---- Chunks: private data hung on a stream under an identifier --------------------------------
 */

/** Hangs `data`, a block from orv_serv_orv_malloc, on the stream and takes it over. Errors:
 *  RNG_NO_MEMORY, and then data is the caller's still. */
ORV_API int32_t __zokAddChunk(StreamState* stream, uint32_t id, void* data, int32_t size);
/** Data of the newest chunk with that identifier, or 0 (no status). */
ORV_API void* __zokSearchChunk(StreamState* stream, int32_t id);
/** How many chunks there are (no status). */
ORV_API int32_t __zokGetNumChunks(StreamState* stream);
ORV_API int32_t __zokDeleteChunks(StreamState* stream);

/* ---- Abstract streams: numbers from a circular buffer that a callback fills -------------------
 */

/** Writes at least *nmin and at most *nmax elements into the buffer of *length elements, from index
 *  *idx on and around its end, and returns how many. */
typedef int32_t (*AbstractWords)(StreamState* stream, int32_t* length, uint32_t* buffer,
                                 int32_t* nmin, int32_t* nmax, int32_t* idx);
typedef int32_t (*AbstractDoubles)(StreamState* stream, int32_t* length, double* buffer,
                                   int32_t* nmin, int32_t* nmax, int32_t* idx);
typedef int32_t (*AbstractFloats)(StreamState* stream, int32_t* length, float* buffer,
                                  int32_t* nmin, int32_t* nmax, int32_t* idx);

/** Creates a stream of the user's numbers, [a, b) being the range they lie in. The buffer of n
 *  elements stays the user's. An abstract stream serves its own type only; the others get
 *  RNG_ABSTRACT_BAD_FLAVOUR. Errors: RNG_BAD_ARGS, RNG_NO_MEMORY. */
ORV_API int32_t __zokiNewAbstractStream(StreamState** stream, int32_t n, uint32_t* buffer,
                                        AbstractWords callback);
ORV_API int32_t __zokdNewAbstractStream(StreamState** stream, int32_t n, double* buffer, double a,
                                        double b, AbstractDoubles callback);
ORV_API int32_t __zoksNewAbstractStream(StreamState** stream, int32_t n, float* buffer, float a,
                                        float b, AbstractFloats callback);

/* ---- Files ---------------------------------------------------------------------------------- */

/** Writes a stream with its chunks to a file. `length` bytes of `name` are the file's name, or a
 *  terminated string if length is negative. What the file held is lost even if writing fails.
 *  Errors: RNG_INVALID_BRNG; RNG_BAD_FILE_FORMAT for a registered generator whose StateSize a file
 *  can't tell, below 16 or above 65551 bytes; RNG_NO_MEMORY, RNG_FILE_OPEN, RNG_FILE_WRITE,
 *  RNG_FILE_CLOSE. Nothing is written after the first four. */
ORV_API int32_t __zokSaveStreamF(StreamState* stream, const char* name, int32_t length);

/** Creates a stream from a file. *stream must be 0 or a valid stream; a failure deletes that,
 *  success overwrites the pointer. Errors: RNG_NO_MEMORY, RNG_FILE_OPEN, RNG_FILE_READ,
 *  RNG_BAD_FILE_FORMAT, RNG_UNSUPPORTED_FILE_VERSION, RNG_FILE_CLOSE. */
ORV_API int32_t __zokLoadStreamF(StreamState** stream, const char* name, int32_t length);

/* ---- Basic generators ----------------------------------------------------------------------- */

/* The entries of each generator, as its row holds them. */
#define ORV_ZOK_GENERATOR(name)                                                                    \
  ORV_API int32_t __zokBRng##name##InitStream(int32_t method, StreamState* stream, int32_t n,      \
                                              const uint32_t* params);                             \
  ORV_API int32_t __zoksBRng##name(StreamState* stream, int32_t n, float* r, float a, float b);    \
  ORV_API int32_t __zokdBRng##name(StreamState* stream, int32_t n, double* r, double a, double b); \
  ORV_API int32_t __zokiBRng##name(StreamState* stream, int32_t n, uint32_t* r);

ORV_ZOK_GENERATOR(MCG31M1)
ORV_ZOK_GENERATOR(R250)
ORV_ZOK_GENERATOR(MRG32K3A)
ORV_ZOK_GENERATOR(MCG59)
ORV_ZOK_GENERATOR(WH)
ORV_ZOK_GENERATOR(Sobol)
ORV_ZOK_GENERATOR(Niederr)
ORV_ZOK_GENERATOR(MT19937)
ORV_ZOK_GENERATOR(MT2203)
ORV_ZOK_GENERATOR(SFMT19937)
ORV_ZOK_GENERATOR(iAbstract)
ORV_ZOK_GENERATOR(dAbstract)
ORV_ZOK_GENERATOR(sAbstract)
#undef ORV_ZOK_GENERATOR

/** Multipliers and moduli of the 273 WH generators, and the moduli's reciprocals. */
extern ORV_API const uint8_t _zok_WH_A[273][4];
extern ORV_API const uint32_t _zok_WH_M[273][4];
extern ORV_API const double _zokdWH_IM_Tab[273][4];

/** Twist constant and two tempering masks of the 1024 MT2203 generators. */
extern ORV_API const uint32_t _zok_mt2203_table[1024][3];

/* ---- Quasi-random streams ---------------------------------------------------------------------
 *
 * BRNG_SOBOL and BRNG_NIEDERR deliver points of low discrepancy, the coordinates of each in their
 * order, in the order of the Gray code and without the point 0: in one dimension 0.5, 0.75, 0.25.
 * The first seed word is the number of dimensions, 1 to 40 or 1 to 318; anything else makes it 1.
 * The second, if it is 1, says that data of the user's own follow, whose form the third tells.
 * `dim` is the first word, bit i of a polynomial the coefficient of x^i, and a direction number the
 * word that a bit of the Gray code adds, a dimension's 32 from the lowest bit on.
 *
 *   Sobol    1   polynomials of dimensions 2 to dim, from word 3 on; dim at most 40
 *            2   the length of a row of initial numbers, from word 4 on the rows of dimensions 2 to
 *                dim; dim at most 40
 *            3   polynomials as in 1, then a length and rows as in 2
 *            11  as 3, but of all dimensions
 *            4   direction numbers of all dimensions, from word 3 on
 *   Niederr  1   polynomials of all dimensions, from word 3 on; none below 2
 *            4   direction numbers of all dimensions, from word 3 on
 *
 * Initial numbers that a row is too short for are 1, and so are all where a polynomial has no x.
 * Data of no such form, or incomplete, are passed over: the tables built in are used for dim
 * dimensions, or for 1 if that is too many. Dimensions above 40 and 318 live in the stream's chunks
 * (with Sobol's forms 3, 4 and 11 there is one in any case): where these are deleted draws return
 * RNG_NULL_ENTRY. A state that no generator made, as from a damaged file, returns
 * RNG_BAD_FILE_FORMAT.
 *
 * __zokLeapfrogStream(stream, k, 0x7FFFFFFF) makes the stream deliver coordinate k alone, from 0,
 * of every point whose coordinate k has not been delivered; where another was selected before, one
 * point is passed over. Other leapfrogs are refused. __zokSkipAheadStream counts the elements of
 * whole points even so. A request for n elements at point c returns RNG_QRNG_EXHAUSTED, with
 * nothing done, if c + n is above 2^32 - 1. A copy of the state goes on as its source does.
 */

/** Of Sobol's dimensions 2 to 40: primitive polynomials, their degrees, as many initial numbers
 *  (Bratley and Fox 1988, mended after Joe and Kuo 2003). */
extern ORV_API const uint32_t uSobolIrredPoly[39];
extern ORV_API const int32_t iSobolIrredPolyDeg[39];
extern ORV_API const uint32_t uSobolMInit[39][8];
/** The first 318 irreducible polynomials and their degrees. */
extern ORV_API const uint32_t uNiederrIrredPoly[318];
extern ORV_API const int32_t iNiederrIrredPolyDeg[318];

/** a^n modulo 2^31 - 1, 2^59 and m; the exponent's low word comes first (no status). */
ORV_API uint32_t __zokiPowMod2P31M1(uint32_t a, uint32_t n_low, uint32_t n_high);
ORV_API uint64_t __zokiPowMod2P59(uint32_t a_low, uint32_t a_high, uint32_t n_low, uint32_t n_high);
ORV_API uint32_t __zokiPowMod(uint32_t a, uint32_t n_low, uint32_t n_high, uint32_t m);
/** Replaces v by M^n v modulo m, M having the rows (0, 1, 0), (0, 0, 1), (c[2], c[1], c[0]). */
ORV_API void __zokiVect3PowMod(uint32_t* v, const uint32_t* c, uint32_t m, uint32_t n_low,
                               uint32_t n_high);

/* ---- Uniform distributions --------------------------------------------------------------------
 *
 * A number is a + u (b - a), u being a fraction below 1 in the steps of the generator's word: 2^-31
 * for MCG31M1 and Sobol, about 2^-51 for WH, 2^-59 for MCG59, 2^-32 for the others. It is rounded,
 * and so b itself can come out: where the numbers below b lie d apart, with a probability of about
 * d / (2 (b - a)), or never where this is less than the generator's step. So on [0, 1)
 *
 *   a float is 1 with probability 2^-25, 3 times in 10^8, for every generator (half as often again
 *   for SFMT19937, which computes floats in single precision, as Sobol and Niederr do);
 *   a double is never 1, but for MCG59, with probability 2^-54.
 *
 * Where b - a is not a double, and for floats of these three, rounding may also step over an end.
 */

/** Asks the continuous uniforms to keep each result in [a, b], b included. */
enum { RNG_ACCURATE = 0x40000000 };

/** n uniform numbers on [a, b), up to rounding. */
ORV_API int32_t _zokdRngUniform(int32_t method, StreamState* stream, int32_t n, double* r, double a,
                                double b);
ORV_API int32_t _zoksRngUniform(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                                float b);
/** n uniform integers on [a, b), the floors of doubles: b comes out where the double is b, with a
 *  probability of 2^-23 at most (b = a + 1, far from 0). None is drawn for n below 1. */
ORV_API int32_t _zokiRngUniform(int32_t method, StreamState* stream, int32_t n, int32_t* r,
                                int32_t a, int32_t b);
/** n elements as the generator makes them, see BrngProperties.WordSize. */
ORV_API int32_t _zokiRngUniformBits(int32_t method, StreamState* stream, int32_t n, uint32_t* r);

/* ---- Continuous distributions -----------------------------------------------------------------
 *
 * n numbers of a law into r, from uniform numbers on [0, 1) of the stream, doubles from doubles and
 * floats from floats. Parameters are not checked: beta, sigma and all shapes have to be above 0.
 * `method` is looked at by Gaussian only; the rest have one way each.
 *
 * A split of a request into parts of one element or more gives the same numbers, to the bit, on
 * every processor, in either word size; also where a method rejects, and where it makes numbers in
 * pairs: what is left of a pair waits in a chunk of the stream, and so goes into copies and files.
 * Laplace on MCG31M1 and R250 is the exception. An exact 0 among the uniforms gives a finite
 * number, as if the logarithm of 0 were that of the smallest positive number, -744.44 for doubles
 * and -103.28 for floats.
 *
 * Functions are computed at EP for doubles and LA for floats, relative errors of 2^-25 and 2^-22:
 * numbers that tests of 10^6 do not tell from the law, but whose last bits are not those of the
 * formula's exact value.
 *
 * The status is RNG_OK or what the generator answered when it failed; numbers made until then stay.
 * Gamma and Beta give up with RNG_BAD_ARGS where no number comes, be it of the parameters (not a
 * number, infinite) or of the stream (always the same).
 * A thread's mode word, error callback and status are after a call what they were before, and what
 * vector functions report inside reaches nobody. */

/** a - beta ln u: exponential with mean a + beta, by inversion; never below a. Costs one
 *  uniform. */
ORV_API int32_t _zokdRngExponential(int32_t method, StreamState* stream, int32_t n, double* r,
                                    double a, double beta);
ORV_API int32_t _zoksRngExponential(int32_t method, StreamState* stream, int32_t n, float* r,
                                    float a, float beta);

/** a - beta ln u or a + beta ln u: Laplace with mean a and deviation beta sqrt(2). Costs two
 *  uniforms; the second chooses the side, 0.5 and below that of a - beta ln u. They are drawn in
 *  blocks of 1024 pairs and the rest, even if that is none: MCG31M1 and R250 then make one more. */
ORV_API int32_t _zokdRngLaplace(int32_t method, StreamState* stream, int32_t n, double* r, double a,
                                double beta);
ORV_API int32_t _zoksRngLaplace(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                                float beta);

/** a + beta (-ln u)^(1/alpha): Weibull of shape alpha, by inversion; never below a. Costs one
 *  uniform. */
ORV_API int32_t _zokdRngWeibull(int32_t method, StreamState* stream, int32_t n, double* r,
                                double alpha, double a, double beta);
ORV_API int32_t _zoksRngWeibull(int32_t method, StreamState* stream, int32_t n, float* r,
                                float alpha, float a, float beta);

/** a + beta tan v, v uniform on [-pi/2, pi/2): Cauchy with median a and quartiles a - beta and
 *  a + beta, by inversion. Costs one uniform. */
ORV_API int32_t _zokdRngCauchy(int32_t method, StreamState* stream, int32_t n, double* r, double a,
                               double beta);
ORV_API int32_t _zoksRngCauchy(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                               float beta);

/** a + beta sqrt(-ln u): Rayleigh with mean square beta^2 about a, by inversion; never below a.
 *  Costs one uniform. */
ORV_API int32_t _zokdRngRayleigh(int32_t method, StreamState* stream, int32_t n, double* r,
                                 double a, double beta);
ORV_API int32_t _zoksRngRayleigh(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                                 float beta);

/** b + beta exp(g), g Gaussian with mean a and deviation sigma, by RNG_GAUSSIAN_BOXMULLER2 whatever
 *  the method, so that it takes and leaves the same pending pairs; never below b. Costs one
 *  uniform, an even number in all. Errors: RNG_NO_MEMORY. */
ORV_API int32_t _zokdRngLognormal(int32_t method, StreamState* stream, int32_t n, double* r,
                                  double a, double sigma, double b, double beta);
ORV_API int32_t _zoksRngLognormal(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                                  float sigma, float b, float beta);

/** a + beta ln e, e exponential with mean 1: Gumbel of smallest values, with mean a - 0.5772 beta
 *  and deviation beta pi / sqrt(6), by inversion. A uniform of 1 counts as one a bit below. Costs
 *  one uniform. */
ORV_API int32_t _zokdRngGumbel(int32_t method, StreamState* stream, int32_t n, double* r, double a,
                               double beta);
ORV_API int32_t _zoksRngGumbel(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                               float beta);

/** How Gaussian numbers are made. */
enum {
  RNG_GAUSSIAN_BOXMULLER = 0,  /**< the sine half of each pair; costs two uniforms */
  RNG_GAUSSIAN_BOXMULLER2 = 1, /**< both halves; costs one uniform, an even number in all */
  RNG_GAUSSIAN_ICDF = 2        /**< by inversion; costs one uniform */
};

/** Gaussian with mean a and deviation sigma: rho sin(2 pi u2) and rho cos(2 pi u2) with
 *  rho = sqrt(-2 ln u1) (Box and Muller 1958), or the inverse error function of a uniform number
 *  on [-1, 1).
 *
 *  RNG_GAUSSIAN_BOXMULLER2 keeps the uniforms of a pair whose first number has been delivered in a
 *  chunk, 2 for doubles and 1 for floats, and begins the next call with the other; after a failure
 *  that pair is still to come. By inversion an exact -1 gives a - 1.0848 sigma, in floats
 *  a - 1.5326 sigma. `method` is not checked. Errors: RNG_NO_MEMORY, before any number. */
ORV_API int32_t _zokdRngGaussian(int32_t method, StreamState* stream, int32_t n, double* r,
                                 double a, double sigma);
ORV_API int32_t _zoksRngGaussian(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                                 float sigma);

/** How a lower triangular factor is stored. */
enum {
  RNG_STORAGE_FULL = 0,   /**< dim x dim elements, row by row; above the diagonal nothing is read */
  RNG_STORAGE_PACKED = 1, /**< the lower triangle, column by column */
  RNG_STORAGE_DIAGONAL = 2 /**< the diagonal of a diagonal factor */
};

/** n vectors T x + a of dim elements, one after the other: Gaussian with mean a and covariance
 *  T T', x being standard numbers by `method`. A dim of 1 is Gaussian with a[0] and t[0]; another
 *  mstorage leaves x as it is. n dim may be more than 32 bits count.
 *
 *  An element is summed from the first column to the diagonal, then a is added, without BLAS: the
 *  same bits everywhere, in full and packed storage. Errors: RNG_NO_MEMORY, as in Gaussian, or with
 *  a dim from 1024 on, and then r holds all of x. */
ORV_API int32_t _zokdRngGaussianMV(int32_t method, StreamState* stream, int32_t n, double* r,
                                   int32_t dim, int32_t mstorage, const double* a, const double* t);
ORV_API int32_t _zoksRngGaussianMV(int32_t method, StreamState* stream, int32_t n, float* r,
                                   int32_t dim, int32_t mstorage, const float* a, const float* t);

/** a + beta g, g gamma of shape alpha: mean a + alpha beta, deviation beta sqrt(alpha); never
 *  below a. Shapes above 1 are made by rejection from Gaussian numbers (Marsaglia and Tsang 2000),
 *  1 is Exponential, from 0.6 on by rejection from Weibull numbers (Vaduva 1977), below that by an
 *  exponential power transformation (Devroye 1986). Costs 2.23 uniforms on average for a shape of
 *  0.3, 2.33 for 0.8, 2.03 for 2.5, 2.00 for 20.
 *
 *  With a shape above 1 a candidate may be left, which waits in a chunk, 7 for doubles and 8 for
 *  floats: it is the next call's first, whatever its shape. Errors: RNG_NO_MEMORY, before any
 *  number. */
ORV_API int32_t _zokdRngGamma(int32_t method, StreamState* stream, int32_t n, double* r,
                              double alpha, double a, double beta);
ORV_API int32_t _zoksRngGamma(int32_t method, StreamState* stream, int32_t n, float* r, float alpha,
                              float a, float beta);

/** a + beta x, x beta of shapes p and q: mean a + beta p / (p + q); never outside [a, a + beta]. By
 *  rejection, with both shapes above 1 after Cheng (1978), with one of them below or both, but not
 *  far, after Atkinson and Whittaker (1976), else after Johnk (1964); with a shape of 1 by
 *  inversion. Costs 2.22 uniforms on average for 0.3 and 0.3, 2.45 for 0.8 and 2, 2.17 for 2 and
 *  3, 2.25 for 20 and 30. */
ORV_API int32_t _zokdRngBeta(int32_t method, StreamState* stream, int32_t n, double* r, double p,
                             double q, double a, double beta);
ORV_API int32_t _zoksRngBeta(int32_t method, StreamState* stream, int32_t n, float* r, float p,
                             float q, float a, float beta);

/* ---- Discrete distributions -------------------------------------------------------------------
 *
 * n integers of a law into r, none for n below 1. They come from double uniforms on [0, 1) of the
 * stream where nothing else is said. Numbers that would be above 2147483647 are 2147483647.
 * Parameters are not checked; no value of a number makes a call write elsewhere than to r.
 *
 * A split of a request gives the same numbers, on every processor, in either word size. Small means
 * are inverted: the smallest k with a cumulative probability above u, from a table and with a
 * uniform a number. Large ones are made by rejection from pairs of uniforms, in the order of the
 * pairs. Tables and what else depends on the parameters alone wait in a chunk of the stream for the
 * next call with the same ones, which makes nothing anew; copies and files have them, too.
 *
 * The status is RNG_OK, RNG_NO_MEMORY for a chunk, before any number, what the generator answered
 * when it failed, or RNG_BAD_ARGS where rejection finds no number, in a stream that is always the
 * same; numbers made until then stay. A thread's mode word, error callback and status are after a
 * call what they were before. */

/** 1 with probability p, else 0: whether a float uniform lies below p, taken as a float. Always 0
 *  for p = 0 and 1 for p = 1. A float uniform a number. */
ORV_API int32_t _zokiRngBernoulli(int32_t method, StreamState* stream, int32_t n, int32_t* r,
                                  double p);

/** Failures before the first success, each trial being one with probability p: mean (1 - p) / p. By
 *  inversion, the floor of ln u / ln(1 - p). A uniform a number. */
ORV_API int32_t _zokiRngGeometric(int32_t method, StreamState* stream, int32_t n, int32_t* r,
                                  double p);

/** Successes in ntrial trials of probability p. With x the smaller of p and 1 - p, by inversion for
 *  ntrial x below 30, a uniform a number, and by rejection from there (BTPE, Kachitvichyanukul and
 *  Schmeiser 1988), 2.3 to 3.5 uniforms a number. Chunk 5. */
ORV_API int32_t _zokiRngBinomial(int32_t method, StreamState* stream, int32_t n, int32_t* r,
                                 int32_t ntrial, double p);

/** How Poisson numbers are made. */
enum {
  RNG_POISSON_PTPE = 0,    /**< exact: inversion for means below 27, rejection from there */
  RNG_POISSON_POISNORM = 1 /**< from Gaussian numbers, nearly exact */
};

/** Poisson with mean lambda. No other method exists.
 *
 *  RNG_POISSON_PTPE takes a uniform a number below 27; from there 2.3 to 2.9 (PTPE, Schmeiser
 *  and Kachitvichyanukul 1981). Chunk 3. RNG_POISSON_POISNORM takes one float uniform a number: the
 *  floor of a polynomial in a Gaussian number made by inversion, from 100 on that of Cornish and
 *  Fisher (1938), below fitted for each binade; its cumulative probabilities are off by
 *  7 10^-6 at most and by 1.4 10^-4. Below 1 it inverts sums in floats, up to 11 and never more. */
ORV_API int32_t _zokiRngPoisson(int32_t method, StreamState* stream, int32_t n, int32_t* r,
                                double lambda);

/** Poisson numbers, the i-th with mean lambda[i], as by RNG_POISSON_POISNORM: one float Gaussian
 *  number each, by inversion, whatever the means. Up to 11 for means below 1. */
ORV_API int32_t _zokiRngPoissonV(int32_t method, StreamState* stream, int32_t n, int32_t* r,
                                 const double* lambda);

/** Marked ones in a sample of s from a lot of l that has m, 0 <= s, m <= l. By inversion where the
 *  mode, for the smaller of m and l - m and the smaller of s and l - s, is below 40, a uniform a
 *  number; by rejection from there (H2PE, Kachitvichyanukul and Schmeiser 1985), 2.8 of them. Where
 *  only one number is possible no uniform is drawn.
 *
 *  Chunk 6. A call with other parameters than those that are kept there deletes all chunks of the
 *  stream, those of other distributions included, and with them what waits in those. */
ORV_API int32_t _zokiRngHypergeometric(int32_t method, StreamState* stream, int32_t n, int32_t* r,
                                       int32_t l, int32_t s, int32_t m);

/** Failures before the a-th success of trials with probability p, for any a above 0: mean
 *  a (1 - p) / p. By inversion, a uniform a number, where (a - 1) (1 - p) / p is below 100 and
 *  numbers beyond 254 are rare and fall off quickly; else by rejection, 2 to 3.5 uniforms a
 *  number. Chunk 4. */
ORV_API int32_t _zokiRngNegbinomial(int32_t method, StreamState* stream, int32_t n, int32_t* r,
                                    double a, double p);

#ifdef __cplusplus
}
#endif

#endif
