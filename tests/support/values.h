// Element values for conversion tests: the ones where conversions go wrong
// (bounds of every type, halves, infinities, NaN, subnormals, values past
// the float range) mixed with random ones over the type.
#ifndef PXL_TESTS_SUPPORT_VALUES_H
#define PXL_TESTS_SUPPORT_VALUES_H

#include <cstring>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

namespace pxltest {

inline std::mt19937& ValueRng() {
  static std::mt19937 rng(99);
  return rng;
}

template <typename T>
long double Lo() {
  return static_cast<long double>(std::numeric_limits<T>::lowest());
}
template <typename T>
long double Hi() {
  return static_cast<long double>(std::numeric_limits<T>::max());
}

// Values that catch conversion faults, then random ones over the type.
template <typename T>
std::vector<T> Specials() {
  std::vector<long double> v = {0, 1, 2, 3, 127, 128, 255, 256, 32767, 32768, 65535, 65536};
  for (long double x : std::vector<long double>(v)) v.push_back(-x);
  for (long double x : {2147483647.0L, 2147483648.0L, 4294967295.0L, -2147483648.0L, -2147483649.0L,
                        16777217.0L, 2147483520.0L})
    v.push_back(x);
  std::vector<T> out;
  for (long double x : v)
    if (x >= Lo<T>() && x <= Hi<T>()) out.push_back(static_cast<T>(x));
  out.push_back(std::numeric_limits<T>::lowest());
  out.push_back(std::numeric_limits<T>::max());
  if constexpr (std::is_floating_point<T>::value) {
    const T inf = std::numeric_limits<T>::infinity();
    for (T x : {T(0.5),
                T(1.5),
                T(2.5),
                T(-0.5),
                T(-1.5),
                T(-2.5),
                T(127.5),
                T(-128.5),
                T(254.5),
                T(255.5),
                T(255.49),
                T(-0.49),
                T(32767.5),
                T(-32768.5),
                T(65535.5),
                T(65534.5),
                T(2147483647.5),
                T(-2147483648.5),
                T(4294967295.5),
                T(1e-40),
                T(-1e-40),
                T(-0.0),
                inf,
                -inf,
                std::numeric_limits<T>::quiet_NaN(),
                std::numeric_limits<T>::denorm_min(),
                T(3.5e38),
                T(-3.5e38),
                T(1e300),
                T(1.0000000596046448),
                T(0.1)})
      out.push_back(x);
  }
  return out;
}

template <typename T>
T Draw() {
  static const std::vector<T> specials = Specials<T>();
  const unsigned r = ValueRng()();
  if (r % 3 == 0) return specials[(r / 3) % specials.size()];
  if constexpr (std::is_floating_point<T>::value) {
    const T range = (r % 3 == 1) ? T(70000) : T(5e9);
    return std::uniform_real_distribution<T>(-range, range)(ValueRng());
  } else {
    T v;
    const uint64_t bits = (uint64_t{ValueRng()()} << 32) | ValueRng()();
    std::memcpy(&v, &bits, sizeof v);
    return v;
  }
}

}  // namespace pxltest

#endif
