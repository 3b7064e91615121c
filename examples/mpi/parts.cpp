// examples/mpi/parts.cpp - the parts of a problem shared among the ranks of MPI, from C++
//
//     mpirun -n 4 parts_mpi_cpp [level]
//
// On machines of different kinds name the level of the oldest: all then give the same bits.
#include "examples/mpi/parts.h"

#include <mpi.h>
#include <orvel/host.h>

int main(int argc, char** argv)
{
    MPI_Init(&argc, &argv);
    int rank, ranks;
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_size(MPI_COMM_WORLD, &ranks);
    if (argc > 1 && orvel_use_level(argv[1]) == 0) {
        std::fprintf(stderr, "rank %d: this machine does not have the level %s\n", rank, argv[1]);
        MPI_Abort(MPI_COMM_WORLD, 1);
    }
    std::vector<double> own(results * parts), all(results * parts);
    for (int part = rank; part < parts; part += ranks) compute(part, &own[results * part]);
    // Every number is a part's own plus zeros from the other ranks, which no order of adding changes.
    MPI_Reduce(own.data(), all.data(), results * parts, MPI_DOUBLE, MPI_SUM, 0, MPI_COMM_WORLD);
    if (rank == 0) print_totals(all);
    MPI_Finalize();
}
