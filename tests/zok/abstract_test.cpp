// SPDX-License-Identifier: MIT
// Streams of the user's own numbers.
#include <math.h>

#include <algorithm>
#include <functional>

#include "stream_support.hpp"

using namespace orv_test;

namespace {

/// Numbers are to lie in [-3, 7), and are drawn on [1, 1.3).
template <class T>
class Abstract : public testing::Test {
 protected:
  using Calls = std::vector<std::vector<int32_t>>;  // of length, least, most, index
  static inline Calls calls;
  static inline std::function<int32_t(int32_t least, int32_t most)> answer;
  static inline uint32_t made;

  /// The user's side: a counting sequence, as much of it as `answer` says.
  static int32_t fill(StreamState*, int32_t* length, T* buffer, int32_t* least, int32_t* most,
                      int32_t* index) {
    calls.push_back({*length, *least, *most, *index});
    const int32_t count = answer(*least, *most);
    if (count > *most) return count;
    for (int32_t i = 0; i < count; ++i) buffer[(*index + i) % *length] = T(made++);
    return count;
  }

  static int32_t create(StreamState** s, int32_t n, T* r, decltype(&fill) callback, T a = -3,
                        T b = 7) {
    if constexpr (std::is_integral_v<T>) return __zokiNewAbstractStream(s, n, r, callback);
    if constexpr (std::is_same_v<T, float>) return __zoksNewAbstractStream(s, n, r, a, b, callback);
    if constexpr (sizeof(T) == 8) return __zokdNewAbstractStream(s, n, r, a, b, callback);
  }

  template <class U>
  static int32_t draw(StreamState* s, int32_t n, U* r) {
    return uniform(0, s, n, r, U(1), U(1.3));
  }

  /// What a draw makes of element k.
  static T drawn_element(uint32_t k) {
    return std::is_integral_v<T> ? T(k) : T(1 + ((T(1.3) - 1) / T(10)) * (T(k) + 3));
  }

  void make(int32_t length, int32_t surplus = 0) {
    answer = [=](int32_t least, int32_t most) { return std::min(most, least + surplus); };
    calls.clear();
    made = drawn = 0;
    buffer.assign(length, T(77));
    __zokDeleteStream(&stream);
    ASSERT_EQ(create(&stream, length, buffer.data(), fill), RNG_OK);
  }

  /// The next n numbers are the next of the sequence, none if n is negative.
  void expect_next(int32_t n) {
    std::vector<T> r(std::max(n, 0)), expected(r.size());
    ASSERT_EQ(draw(stream, n, r.data()), RNG_OK) << n;
    for (T& x : expected) x = drawn_element(drawn++);
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
        this->expect_next(static_cast<int32_t>((random >> 16) % (request % 4 ? 20 : 500)));
        this->expect_next(-request);
      }
    }
  }
}

TYPED_TEST(Abstract, TheCallbackIsAskedForWhatIsNeededAndWhatFits) {
  using Expected = typename TestFixture::Calls;
  this->make(100);
  this->expect_next(250);
  EXPECT_EQ(this->calls, (Expected{{100, 100, 100, 0}, {100, 100, 100, 0}, {100, 50, 100, 0}}));
  this->make(100, 20);
  for (const int32_t n : {30, 15, 5, 1}) this->expect_next(n);  // a surplus of 20 serves first
  EXPECT_EQ(this->calls, (Expected{{100, 30, 100, 0}, {100, 1, 100, 50}}));
}

TYPED_TEST(Abstract, ARefusalKeepsThePositionFromBeforeTheDraw) {
  for (const int32_t refusal : {0, -1, 11}) {
    for (const size_t good_calls : {0, 2}) {
      this->make(10, 4);
      this->expect_next(3);  // leaves 4 unread
      const auto good = this->answer;
      this->answer = [=](int32_t least, int32_t most) {
        return TestFixture::calls.size() <= 1 + good_calls ? good(least, most) : refusal;
      };
      const std::string before = state_of(this->stream);
      std::vector<TypeParam> r(50, TypeParam(99));
      EXPECT_EQ(this->draw(this->stream, 50, r.data()),
                refusal == 0 ? RNG_ABSTRACT_NO_DATA : RNG_ABSTRACT_BAD_COUNT);
      EXPECT_EQ(this->calls.size(), 2u + good_calls);
      for (int i = 0; i < 4; ++i) EXPECT_EQ(r[i], this->drawn_element(3 + i)) << "copied already";
      EXPECT_EQ(r[49], TypeParam(99));
      EXPECT_EQ(state_of(this->stream), before);
    }
  }
}

TYPED_TEST(Abstract, ServesItsOwnTypeOnlyAndCannotJump) {
  this->make(10);
  const int32_t own = this->stream->Brng;
  const auto expect_for = [&](int32_t brng, auto number) {
    EXPECT_EQ(this->draw(this->stream, 1, &number),
              own == brng ? RNG_OK : RNG_ABSTRACT_BAD_FLAVOUR);
  };
  expect_for(BRNG_IABSTRACT, 0u);
  expect_for(BRNG_DABSTRACT, 0.0);
  expect_for(BRNG_SABSTRACT, 0.0f);
  EXPECT_EQ(__zokLeapfrogStream(this->stream, 0, 2), RNG_LEAPFROG_UNSUPPORTED);
  EXPECT_EQ(__zokSkipAheadStream(this->stream, 2), RNG_SKIPAHEAD_UNSUPPORTED);
  EXPECT_EQ(properties_of(own).InitStream(3, this->stream, 0, nullptr), RNG_BAD_METHOD);
}

TYPED_TEST(Abstract, ABrokenBufferIsSeenAtTheDraw) {
  TypeParam r[3];
  this->make(10);
  // The buffer's address is the last but one of the state's words.
  const size_t end = properties_of(this->stream->Brng).StateSize;
  memset(reinterpret_cast<char*>(+this->stream) + end - 2 * sizeof(void*), 0, sizeof(void*));
  EXPECT_EQ(this->draw(this->stream, 3, r), RNG_NULL_ENTRY);
  EXPECT_TRUE(this->calls.empty());

  __zokDeleteStream(&this->stream);
  ASSERT_EQ(this->create(&this->stream, -5, r, this->fill), RNG_OK);
  EXPECT_EQ(this->draw(this->stream, 3, r), RNG_ABSTRACT_BAD_COUNT);
}

TYPED_TEST(Abstract, CreationRefusesBadArguments) {
  using T = TypeParam;
  T memory[4];
  Stream first, other;
  const auto create = this->create;
  const auto fill = this->fill;
  EXPECT_EQ(create(&first, 0, memory, fill, 0, 1), RNG_BAD_ARGS);
  EXPECT_EQ(create(&first, 4, nullptr, fill, 0, 1), RNG_BAD_ARGS);
  EXPECT_EQ(create(&first, 4, memory, nullptr, 0, 1), RNG_BAD_ARGS);
  if constexpr (std::is_floating_point_v<T>) {
    for (const T a : {1, 2}) EXPECT_EQ(create(&first, 4, memory, fill, a, 1), RNG_BAD_ARGS);
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(create(&first, 4, memory, fill, NAN, 1), RNG_OK);
    EXPECT_EQ(create(&other, 4, memory, fill, 0, NAN), RNG_OK);
  }
}

}  // namespace
