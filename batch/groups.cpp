// Batches in groups of as many frames as registers of one width take. Compiled once for every width, TFMBATCH_BYTES.
#include "batch.hpp"
#include "paths.hpp"

namespace tfmgen::batch {

template std::int64_t transformGroups<TFMBATCH_BYTES>(const Batch& batch);

} // namespace tfmgen::batch
