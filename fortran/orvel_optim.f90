! fortran/orvel_optim.f90 - interfaces of univariate minimization
module orvel_optim
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
    subroutine uvmif(f, xguess, step, bound, xacc, maxfn, x)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: xguess, step, bound, xacc
      integer, intent(in) :: maxfn
      real, intent(inout) :: x
    end subroutine uvmif
    subroutine duvmif(f, xguess, step, bound, xacc, maxfn, x)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: xguess, step, bound, xacc
      integer, intent(in) :: maxfn
      double precision, intent(inout) :: x
    end subroutine duvmif
  end interface
end module orvel_optim
