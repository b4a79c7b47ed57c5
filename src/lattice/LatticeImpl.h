// All bodies of Lattice, for the files that instantiate it.
#pragma once

#include "lattice/LatticeAardal.inl"
#include "lattice/LatticeBackup.inl"
#include "lattice/LatticeCheck.inl"
#include "lattice/LatticeFiles.inl"
#include "lattice/LatticeGenerate.inl"
#include "lattice/LatticeMapping.inl"
#include "lattice/LatticeMoves.inl"
#include "lattice/LatticeNormalise.inl"
#include "lattice/LatticeRecord.inl"
#include "lattice/LatticeReports.inl"
#include "lattice/LatticeRestart.inl"
#include "lattice/LatticeScore.inl"
#include "lattice/LatticeTransform.inl"
#include "lattice/reduce/LatticeLll.inl"
#include "lattice/reduce/LatticeOrthogonal.inl"
