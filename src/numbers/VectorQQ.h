// Vectors and matrices over QQ, instantiated once.
#pragma once

#include "core/Elimination.h"
#include "core/Matrix.h"
#include "core/VectorText.h"
#include "numbers/QQ.h"

namespace starsift {

extern template class Vector<QQ>;
extern template class Matrix<QQ>;

extern template Index eliminate(Matrix<QQ>&, Matrix<QQ>&, bool);

extern template void readVector(TextCursor&, Vector<QQ>&);
extern template void readVector(StreamCursor&, Vector<QQ>&);
extern template void appendText(std::string&, const Vector<QQ>&, int);

}  // namespace starsift
