#include "lattice/LatticeImpl.h"
#include "numbers/Conversion.h"
#include "numbers/QQ.h"

namespace starsift {

template class Lattice<QQ, long double>;
template void Lattice<QQ, long double>::assignFrom(const Lattice<QQ, long double>&, Settings);
template void Lattice<QQ, long double>::assignFrom(const Lattice<long double, long double>&,
                                                   Settings);
template void Lattice<QQ, long double>::convertFrom(const Lattice<QQ, long double>&);
template void Lattice<QQ, long double>::convertFrom(const Lattice<long double, long double>&);

}  // namespace starsift
