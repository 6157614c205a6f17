// The interface of FFTW for templates over the sample type.
#pragma once

#include <fftw3.h>

#include <type_traits>

namespace bench {

// The interface exists once for each sample type, under names that differ in their prefix.
template <class T>
struct Fftw;

#define BENCH_FFTW_API(T, prefix)                                                                                      \
  template <>                                                                                                          \
  struct Fftw<T> {                                                                                                     \
    using Complex = prefix##_complex;                                                                                  \
    using Plan = std::remove_pointer_t<prefix##_plan>;                                                                 \
    static constexpr auto complexPlan = &prefix##_plan_dft_1d;                                                         \
    static constexpr auto realToComplexPlan = &prefix##_plan_dft_r2c_1d;                                               \
    static constexpr auto complexToRealPlan = &prefix##_plan_dft_c2r_1d;                                               \
    static constexpr auto realToRealPlan = &prefix##_plan_r2r_1d;                                                      \
    static constexpr auto gridPlan = &prefix##_plan_r2r;                                                               \
    static constexpr auto manyComplexPlan = &prefix##_plan_many_dft;                                                   \
    static constexpr auto manyRealToComplexPlan = &prefix##_plan_many_dft_r2c;                                         \
    static constexpr auto manyComplexToRealPlan = &prefix##_plan_many_dft_c2r;                                         \
    static constexpr auto manyRealToRealPlan = &prefix##_plan_many_r2r;                                                \
    static constexpr auto execute = &prefix##_execute;                                                                 \
    static constexpr auto destroy = &prefix##_destroy_plan;                                                            \
    static constexpr auto forgetWisdom = &prefix##_forget_wisdom;                                                      \
    static constexpr auto readWisdom = &prefix##_import_wisdom_from_filename;                                          \
    static constexpr auto writeWisdom = &prefix##_export_wisdom_to_filename;                                           \
    static constexpr auto limitTime = &prefix##_set_timelimit;                                                         \
  };
BENCH_FFTW_API(float, fftwf)
BENCH_FFTW_API(double, fftw)
#undef BENCH_FFTW_API

} // namespace bench
