! docs/examples/constants.f90 - examples of machine constants in the array style
program constants
  use amach_int
  implicit none
  print '(a)', '-- AMACH_INT_mp_AMACH'
  call example
contains
  subroutine example
    ! example AMACH_INT_mp_AMACH
    real :: single
    double precision :: double
    single = amach(4)   ! the constant in the precision of the variable
    double = amach(4)
    print '(2es14.6)', single, double
    ! end
  end subroutine example
end program constants
