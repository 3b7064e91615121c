! examples/mpi/ranks.f90 - the parts of a problem shared among the ranks of MPI, from Fortran
!
!     mpirun -n 4 parts_mpi_f90 [level]
!
! On machines of different kinds name the level of the oldest: all then give the same bits.
program ranks
  use parts_of_problem
  use mpi
  implicit none
  double precision :: own(results, parts), all(results, parts)
  character(40) :: level
  integer :: rank, count_of_ranks, part, status

  call mpi_init(status)
  call mpi_comm_rank(MPI_COMM_WORLD, rank, status)
  call mpi_comm_size(MPI_COMM_WORLD, count_of_ranks, status)
  if (command_argument_count() > 0) then
    call get_command_argument(1, level)
    if (orvel_use_level(trim(level)//c_null_char) == 0) then
      print "(3a)", " this machine does not have the level ", trim(level), "."
      call mpi_abort(MPI_COMM_WORLD, 1, status)
    end if
  end if
  own = 0
  do part = rank + 1, parts, count_of_ranks
    own(:, part) = computed(part)
  end do
  ! Every number is a part's own plus zeros from the other ranks, which no order of adding changes.
  call mpi_reduce(own, all, results*parts, MPI_DOUBLE_PRECISION, MPI_SUM, 0, MPI_COMM_WORLD, status)
  if (rank == 0) call print_totals(all)
  call mpi_finalize(status)
end program ranks
