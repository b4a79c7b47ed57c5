// All bodies of Lattice, for the files that instantiate it.
#pragma once

#include "lattice/find/LatticeBackup.inl"
#include "lattice/find/LatticeCheck.inl"
#include "lattice/find/LatticeRestart.inl"
#include "lattice/find/LatticeScore.inl"
#include "lattice/io/LatticeFiles.inl"
#include "lattice/io/LatticeReports.inl"
#include "lattice/make/LatticeAardal.inl"
#include "lattice/make/LatticeGenerate.inl"
#include "lattice/make/LatticeMapping.inl"
#include "lattice/make/LatticeNormalise.inl"
#include "lattice/make/LatticeRecord.inl"
#include "lattice/make/LatticeTransform.inl"
#include "lattice/reduce/LatticeBlocks.inl"
#include "lattice/reduce/LatticeLll.inl"
#include "lattice/reduce/LatticeMoves.inl"
#include "lattice/reduce/LatticeOrthogonal.inl"
