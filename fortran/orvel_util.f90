! fortran/orvel_util.f90 - interfaces of calendar, clock and their helpers
module orvel_util
  implicit none
  public

  interface
    integer function ndays(iday, month, iyear)
      integer, intent(in) :: iday, month, iyear
    end function ndays
    subroutine ndyin(ndays, iday, month, iyear)
      integer, intent(in) :: ndays
      integer, intent(out) :: iday, month, iyear
    end subroutine ndyin
    integer function idywk(iday, month, iyear)
      integer, intent(in) :: iday, month, iyear
    end function idywk
    subroutine c1dat(iday, month, iyear, icode, leap)
      integer, intent(in) :: iday, month, iyear
      integer, intent(out) :: icode, leap
    end subroutine c1dat
    subroutine tdate(iday, month, iyear)
      integer, intent(out) :: iday, month, iyear
    end subroutine tdate
    subroutine timdy(ihour, minute, isec)
      integer, intent(out) :: ihour, minute, isec
    end subroutine timdy
    real function cpsec()
    end function cpsec
    subroutine c1iarg(iarg, nmarg, lo, hi, icode)
      integer, intent(in) :: iarg, lo, hi
      character(*), intent(in) :: nmarg
      integer, intent(inout) :: icode
    end subroutine c1iarg
    subroutine c1tci(chrstr, slen, num, ier)
      character(*), intent(in) :: chrstr
      integer, intent(in) :: slen
      integer, intent(out) :: num, ier
    end subroutine c1tci
  end interface
end module orvel_util
