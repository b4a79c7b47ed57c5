#include "core/Vector.inl"

namespace starsift {

STARSIFT_INSTANTIATE_VECTOR(long double);
STARSIFT_INSTANTIATE_VECTOR(long);

// Lists of short integers are edited but do no arithmetic.
template void removeElement(Array<short>&, Index);

}  // namespace starsift
