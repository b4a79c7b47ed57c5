#include "lattice/LatticeImpl.h"
#include "numbers/Conversion.h"
#include "numbers/QQ.h"

namespace starsift {

template class Lattice<long double, long double>;
template void Lattice<long double, long double>::assignFrom(
    const Lattice<long double, long double>&, Settings);
template void Lattice<long double, long double>::assignFrom(const Lattice<QQ, long double>&,
                                                            Settings);
template void Lattice<long double, long double>::convertFrom(
    const Lattice<long double, long double>&);
template void Lattice<long double, long double>::convertFrom(const Lattice<QQ, long double>&);

}  // namespace starsift
