#include "numbers/VectorQQ.h"

#include "core/Elimination.inl"
#include "core/Matrix.inl"
#include "core/Vector.inl"

namespace starsift {

STARSIFT_INSTANTIATE_VECTOR(QQ);
STARSIFT_INSTANTIATE_MATRIX(QQ);
template Index eliminate(Matrix<QQ>&, Matrix<QQ>&, bool);

}  // namespace starsift
