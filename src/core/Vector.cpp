#include "core/Vector.inl"

namespace starsift {

STARSIFT_INSTANTIATE_VECTOR(long double);
STARSIFT_INSTANTIATE_VECTOR(long);
STARSIFT_INSTANTIATE_VECTOR(short);

}  // namespace starsift
