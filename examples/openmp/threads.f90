! examples/openmp/threads.f90 - the parts of a problem shared among the threads of OpenMP, from Fortran
!
!     OMP_NUM_THREADS=4 parts_openmp_f90
!
! Which thread takes a part does not matter: every thread has generators and an error state of its own.
program threads
  use parts_of_problem
  implicit none
  double precision :: all(results, parts)
  integer :: part

  !$omp parallel do schedule(dynamic)
  do part = 1, parts
    all(:, part) = computed(part)
  end do
  call print_totals(all)
end program threads
