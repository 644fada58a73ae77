// Streams of the user's own numbers.
#include <math.h>

#include <algorithm>
#include <vector>

#include "stream_support.hpp"

using namespace orv_test;

namespace {

/// The user's side: a counting sequence, and a note of each call.
template <class T>
struct Feed {
  using Call = std::vector<int32_t>;  // length, least, most, index
  static inline std::vector<Call> calls;
  static inline uint32_t next;
  static inline int32_t surplus;       // over what must be delivered
  static inline int32_t answer_after;  // so many calls come the refusals,
  static inline int32_t refusal;       // 1 standing for one more than may be

  static void reset(int32_t s = 0) {
    calls.clear();
    next = 0;
    surplus = s;
    answer_after = INT32_MAX;
  }
  static T element(uint32_t k) { return static_cast<T>(k % 4096); }

  static int32_t fill(StreamState*, int32_t* length, T* buffer, int32_t* least, int32_t* most,
                      int32_t* index) {
    calls.push_back({*length, *least, *most, *index});
    if (static_cast<int32_t>(calls.size()) > answer_after) {
      return refusal == 1 ? *most + 1 : refusal;
    }
    const int32_t count = std::min(*most, *least + surplus);
    for (int32_t i = 0; i < count; ++i) buffer[(*index + i) % *length] = element(next++);
    return count;
  }
};

template <class T>
using Fill = decltype(&Feed<T>::fill);

int32_t create(StreamState** s, int32_t n, uint32_t* buffer, Fill<uint32_t> fill) {
  return __zokiNewAbstractStream(s, n, buffer, fill);
}
int32_t create(StreamState** s, int32_t n, double* buffer, Fill<double> fill, double a = 0,
               double b = 4096) {
  return __zokdNewAbstractStream(s, n, buffer, a, b, fill);
}
int32_t create(StreamState** s, int32_t n, float* buffer, Fill<float> fill, float a = 0,
               float b = 4096) {
  return __zoksNewAbstractStream(s, n, buffer, a, b, fill);
}
int32_t draw(StreamState* s, int32_t n, uint32_t* r) { return _zokiRngUniformBits(0, s, n, r); }
template <class T>
int32_t draw(StreamState* s, int32_t n, T* r) {
  return uniform(0, s, n, r, T(0), T(4096));
}

template <class T>
class Abstract : public testing::Test {
 protected:
  void make(int32_t length, int32_t surplus = 0) {
    Feed<T>::reset(surplus);
    buffer.assign(length, T(77));
    drawn = 0;
    stream.reset();
    ASSERT_EQ(create(&stream, length, buffer.data(), Feed<T>::fill), RNG_OK);
  }
  /// The next n numbers are the next of the sequence.
  void expect_next(int32_t n) {
    std::vector<T> r(n), expected(n);
    ASSERT_EQ(draw(stream, n, r.data()), RNG_OK) << n;
    for (T& x : expected) x = Feed<T>::element(drawn++);
    ASSERT_EQ(r, expected) << n;
  }

  Stream stream;
  std::vector<T> buffer;
  uint32_t drawn = 0;
};
using Types = testing::Types<uint32_t, double, float>;
TYPED_TEST_SUITE(Abstract, Types);

TYPED_TEST(Abstract, AnySplitGivesTheUsersSequence) {
  for (const int32_t length : {1, 2, 7, 100, 4097}) {
    for (const int32_t surplus : {0, 1, 5, 10000}) {
      SCOPED_TRACE(testing::Message() << length << " with " << surplus);
      this->make(length, surplus);
      uint32_t random = 1;
      for (int request = 0; request < 60; ++request) {
        random = random * 1664525 + 1013904223;
        this->expect_next(1 + static_cast<int32_t>((random >> 16) % (request % 4 ? 20 : 500)));
      }
    }
  }
}

TYPED_TEST(Abstract, TheCallbackIsAskedForWhatIsNeededAndWhatFits) {
  using F = Feed<TypeParam>;
  this->make(100);
  this->expect_next(250);
  ASSERT_EQ(F::calls.size(), 3u);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(F::calls[i], (typename F::Call{100, i < 2 ? 100 : 50, 100, 0}));
  this->make(100, 20);
  this->expect_next(30);  // 50 delivered, 20 unread
  this->expect_next(15);
  this->expect_next(5);
  EXPECT_EQ(F::calls.size(), 1u) << "the surplus serves first";
  this->expect_next(1);
  ASSERT_EQ(F::calls.size(), 2u);
  EXPECT_EQ(F::calls[1], (typename F::Call{100, 1, 100, 50}));
}

TYPED_TEST(Abstract, ARefusalKeepsThePositionFromBeforeTheDraw) {
  using F = Feed<TypeParam>;
  const struct {
    int32_t refusal, status;
  } cases[] = {
      {0, RNG_ABSTRACT_NO_DATA}, {-1, RNG_ABSTRACT_BAD_COUNT}, {1, RNG_ABSTRACT_BAD_COUNT}};
  for (const auto& c : cases) {
    for (const int32_t good_calls : {0, 2}) {
      this->make(10, 4);
      this->expect_next(3);  // leaves 4 unread
      F::answer_after = 1 + good_calls;
      F::refusal = c.refusal;
      std::vector<TypeParam> r(50, TypeParam(99));
      EXPECT_EQ(draw(this->stream, 50, r.data()), c.status);
      EXPECT_EQ(F::calls.size(), 2u + good_calls);
      for (int i = 0; i < 4; ++i) EXPECT_EQ(r[i], F::element(3 + i)) << "copied all the same";
      EXPECT_EQ(r[49], TypeParam(99));
      F::answer_after = INT32_MAX;
      if (good_calls == 0) this->expect_next(4 + 3);  // else the buffer has been overwritten
    }
  }
}

TYPED_TEST(Abstract, CopiesShareTheBufferAndKeepTheirPositions) {
  this->make(100, 100);
  this->expect_next(10);
  Stream copy;
  ASSERT_EQ(__zokCopyStream(&copy, this->stream), RNG_OK);
  this->expect_next(40);
  std::vector<TypeParam> r(50);
  ASSERT_EQ(draw(copy, 50, r.data()), RNG_OK);
  EXPECT_EQ(r[49], Feed<TypeParam>::element(59));
  EXPECT_EQ(Feed<TypeParam>::calls.size(), 1u);
}

TYPED_TEST(Abstract, ServesItsOwnTypeOnlyAndCannotJump) {
  this->make(10);
  uint32_t words[4];
  double doubles[4];
  float floats[4];
  const int32_t own = this->stream->Brng;
  const auto expected = [&](int32_t brng) {
    return own == brng ? RNG_OK : RNG_ABSTRACT_BAD_FLAVOUR;
  };
  EXPECT_EQ(draw(this->stream, 4, words), expected(BRNG_IABSTRACT));
  EXPECT_EQ(draw(this->stream, 4, doubles), expected(BRNG_DABSTRACT));
  EXPECT_EQ(draw(this->stream, 4, floats), expected(BRNG_SABSTRACT));
  EXPECT_EQ(__zokLeapfrogStream(this->stream, 0, 2), RNG_LEAPFROG_UNSUPPORTED);
  EXPECT_EQ(__zokSkipAheadStream(this->stream, 2), RNG_SKIPAHEAD_UNSUPPORTED);
  EXPECT_EQ(properties_of(own).InitStream(3, this->stream, 0, words), RNG_BAD_METHOD);
}

TYPED_TEST(Abstract, ANullBufferIsSeenAtTheDraw) {
  this->make(10);
  // The buffer's address is the last but one of the state's words.
  const size_t end = properties_of(this->stream->Brng).StateSize;
  memset(reinterpret_cast<char*>(static_cast<StreamState*>(this->stream)) + end - 2 * sizeof(void*),
         0, sizeof(void*));
  TypeParam r[3];
  EXPECT_EQ(draw(this->stream, 3, r), RNG_NULL_ENTRY);
  EXPECT_TRUE(Feed<TypeParam>::calls.empty());
}

TYPED_TEST(Abstract, ANegativeLengthIsNeverDelivered) {
  TypeParam memory[4], r[3];
  Feed<TypeParam>::reset();
  ASSERT_EQ(create(&this->stream, -5, memory, Feed<TypeParam>::fill), RNG_OK);
  EXPECT_EQ(draw(this->stream, 3, r), RNG_ABSTRACT_BAD_COUNT);
  Feed<TypeParam>::answer_after = 0;
  Feed<TypeParam>::refusal = 0;
  EXPECT_EQ(draw(this->stream, 3, r), RNG_ABSTRACT_BAD_COUNT);
}

TYPED_TEST(Abstract, CreationRefusesBadArguments) {
  using T = TypeParam;
  T memory[4];
  StreamState* const untouched = reinterpret_cast<StreamState*>(8);
  StreamState* made = untouched;
  const auto fill = Feed<T>::fill;
  EXPECT_EQ(create(&made, 0, memory, fill), RNG_BAD_ARGS);
  EXPECT_EQ(create(&made, 4, static_cast<T*>(nullptr), fill), RNG_BAD_ARGS);
  EXPECT_EQ(create(&made, 4, memory, nullptr), RNG_BAD_ARGS);
  if constexpr (std::is_floating_point_v<T>) {
    EXPECT_EQ(create(&made, 4, memory, fill, 1, 1), RNG_BAD_ARGS);
    EXPECT_EQ(create(&made, 4, memory, fill, 2, 1), RNG_BAD_ARGS);
    Stream nan, other;
    EXPECT_EQ(create(&nan, 4, memory, fill, NAN, 1), RNG_OK);
    EXPECT_EQ(create(&other, 4, memory, fill, 0, NAN), RNG_OK);
  }
  EXPECT_EQ(made, untouched);
}

TEST(AbstractRange, NumbersMoveToTheRangeThatIsAskedFor) {
  const auto check = []<class T>(T) {
    T buffer[16], r[40];
    Stream stream;
    Feed<T>::reset();
    ASSERT_EQ(create(&stream, 16, buffer, Feed<T>::fill, -3, 7), RNG_OK);
    ASSERT_EQ(uniform(0, stream, 40, r, T(1), T(1.3)), RNG_OK);
    for (int k = 0; k < 40; ++k) {
      const volatile T scaled = ((T(1.3) - 1) / T(10)) * (static_cast<T>(k) + 3);
      EXPECT_EQ(r[k], 1 + scaled);
    }
  };
  check(double{});
  check(float{});
}

}  // namespace
