// examples/openmp/parts.cpp - the parts of a problem shared among the threads of OpenMP, from C++
//
//     OMP_NUM_THREADS=4 parts_openmp_cpp
//
// Which thread takes a part does not matter: every thread has generators and an error state of its own.
#include "examples/mpi/parts.h"

int main()
{
    std::vector<double> all(results * parts);
#pragma omp parallel for schedule(dynamic)
    for (int part = 0; part < parts; ++part) compute(part, &all[results * part]);
    print_totals(all);
}
