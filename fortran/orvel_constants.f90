! fortran/orvel_constants.f90 - interfaces of the machine constants
module orvel_constants
  implicit none
  public

  interface
    real function amach(n)
      integer, intent(in) :: n
    end function amach
    double precision function dmach(n)
      integer, intent(in) :: n
    end function dmach
    integer function imach(n)
      integer, intent(in) :: n
    end function imach
    real function srmach(n)
      integer, intent(in) :: n
    end function srmach
    double precision function drmach(n)
      integer, intent(in) :: n
    end function drmach
  end interface
end module orvel_constants
