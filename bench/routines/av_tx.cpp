#include "routine.hpp"

extern "C" {
#include <libavutil/tx.h>
}

namespace bench {

namespace {

struct Uninit {
  void operator()(AVTXContext* context) const { av_tx_uninit(&context); }
};

} // namespace

template <class T>
void addAvTx(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines) {
  if (family == Family::hartley) {
    return;
  }
  constexpr bool isFloat = sizeof(T) == sizeof(float);
  const bool isComplex = family == Family::complexForward || family == Family::complexInverse;
  const bool isInverse = family == Family::complexInverse || family == Family::realInverse;
  const AVTXType type =
      isComplex ? (isFloat ? AV_TX_FLOAT_FFT : AV_TX_DOUBLE_FFT) : (isFloat ? AV_TX_FLOAT_RDFT : AV_TX_DOUBLE_RDFT);

  AVTXContext* context = nullptr;
  av_tx_fn transform = nullptr;
  const T scale = 1;
  if (av_tx_init(&context, &transform, type, isInverse ? 1 : 0, n, &scale, 0) < 0) {
    return; // a length it does not have
  }
  const std::shared_ptr<AVTXContext> owned(context, Uninit{});
  const std::ptrdiff_t stride = isComplex ? 2 * sizeof(T) : sizeof(T);
  const auto call = [=, src = arrays.src(), dst = arrays.dst()] { transform(owned.get(), dst, src, stride); };
  const Layout spectrum = isComplex ? Layout::complex : Layout::ccs;
  const Layout signal = isComplex ? Layout::complex : Layout::real;
  routines.push_back(
      {"av_tx", "av_tx", isInverse ? spectrum : signal, isInverse ? signal : spectrum, backToBack(call)});
}

template void addAvTx(Family, int, const Arrays<float>&, std::vector<Routine>&);
template void addAvTx(Family, int, const Arrays<double>&, std::vector<Routine>&);

} // namespace bench
