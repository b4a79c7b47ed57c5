// What there is to measure. A benchmark is named operation/case/subject; a subject that begins
// with "peer" is what another way to the same result costs, and bench/ratios sets the others of
// the same operation and case against it.
#pragma once

namespace starsift::bench {

// bench/numbers
void registerNumberText();
void registerArithmetic();
void registerConversions();

// bench/algorithms
void registerDotProducts();
void registerIndependentRows();
void registerCertificates();

// bench/lattice
void registerOrthogonalise();
void registerReduce();
void registerNormalise();

// bench/search
void registerEnumerate();
void registerSieve();

// bench/files
void registerCheckStars();
void registerReadStars();
void registerWriteStars();
void registerSortStars();
void registerRemoveDuplicates();

}  // namespace starsift::bench
