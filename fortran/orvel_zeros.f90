! fortran/orvel_zeros.f90 - interfaces of the zeros of functions
module orvel_zeros
  implicit none
  public
  private :: real_function, double_function

  abstract interface
    real function real_function(x)
      real, intent(in) :: x
    end function real_function
    double precision function double_function(x)
      double precision, intent(in) :: x
    end function double_function
  end interface

  interface
    subroutine zreal(f, errabs, errrel, eps, eta, nroot, itmax, xguess, x, info)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: errabs, errrel, eps, eta, xguess(*)
      integer, intent(in) :: nroot, itmax
      real, intent(inout) :: x(*)
      integer, intent(inout) :: info(*)
    end subroutine zreal
    subroutine dzreal(f, errabs, errrel, eps, eta, nroot, itmax, xguess, x, info)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: errabs, errrel, eps, eta, xguess(*)
      integer, intent(in) :: nroot, itmax
      double precision, intent(inout) :: x(*)
      integer, intent(inout) :: info(*)
    end subroutine dzreal
  end interface
end module orvel_zeros
