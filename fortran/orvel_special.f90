! fortran/orvel_special.f90 - interfaces of the gamma family and the Chebyshev series
!
! The interfaces of GAMMA and DGAMMA hide the intrinsic functions of these names.
module orvel_special
  implicit none
  public

  interface
    real function gamma(x)
      real, intent(in) :: x
    end function gamma
    double precision function dgamma(x)
      double precision, intent(in) :: x
    end function dgamma
    real function alngam(x)
      real, intent(in) :: x
    end function alngam
    double precision function dlngam(x)
      double precision, intent(in) :: x
    end function dlngam
    subroutine algams(x, algm, s)
      real, intent(in) :: x
      real, intent(inout) :: algm, s
    end subroutine algams
    subroutine dlgams(x, algm, s)
      double precision, intent(in) :: x
      double precision, intent(inout) :: algm, s
    end subroutine dlgams
    real function gamr(x)
      real, intent(in) :: x
    end function gamr
    double precision function dgamr(x)
      double precision, intent(in) :: x
    end function dgamr
    real function r9lgmc(x)
      real, intent(in) :: x
    end function r9lgmc
    double precision function d9lgmc(x)
      double precision, intent(in) :: x
    end function d9lgmc
    subroutine r9gaml(xmin, xmax)
      real, intent(inout) :: xmin, xmax
    end subroutine r9gaml
    subroutine d9gaml(xmin, xmax)
      double precision, intent(inout) :: xmin, xmax
    end subroutine d9gaml
    integer function inits(os, nos, eta)
      real, intent(in) :: os(*), eta
      integer, intent(in) :: nos
    end function inits
    integer function initds(os, nos, eta)
      double precision, intent(in) :: os(*)
      real, intent(in) :: eta
      integer, intent(in) :: nos
    end function initds
    real function csevl(x, cs, n)
      real, intent(in) :: x, cs(*)
      integer, intent(in) :: n
    end function csevl
    double precision function dcsevl(x, cs, n)
      double precision, intent(in) :: x, cs(*)
      integer, intent(in) :: n
    end function dcsevl
  end interface
end module orvel_special
