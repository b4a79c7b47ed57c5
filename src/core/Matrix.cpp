#include "core/Matrix.inl"

#include "core/Elimination.inl"

namespace starsift {

template Index eliminate(Matrix<long double>&, Matrix<long double>&, bool);
STARSIFT_INSTANTIATE_MATRIX(long double);

}  // namespace starsift
