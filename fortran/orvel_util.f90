! fortran/orvel_util.f90 - interfaces of calendar, clock, sorting, permutation and helpers
module orvel_util
  implicit none
  public

  interface
    integer function ndays(iday, month, iyear)
      integer, intent(in) :: iday, month, iyear
    end function ndays
    subroutine ndyin(ndays, iday, month, iyear)
      integer, intent(in) :: ndays
      integer, intent(inout) :: iday, month, iyear
    end subroutine ndyin
    integer function idywk(iday, month, iyear)
      integer, intent(in) :: iday, month, iyear
    end function idywk
    subroutine c1dat(iday, month, iyear, icode, leap)
      integer, intent(in) :: iday, month, iyear
      integer, intent(inout) :: icode, leap
    end subroutine c1dat
    subroutine tdate(iday, month, iyear)
      integer, intent(inout) :: iday, month, iyear
    end subroutine tdate
    subroutine timdy(ihour, minute, isec)
      integer, intent(inout) :: ihour, minute, isec
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
      integer, intent(inout) :: num, ier
    end subroutine c1tci
    ! Input and output may be the same array, so neither has an intent.
    subroutine svrgn(n, ra, rb)
      integer, intent(in) :: n
      real :: ra(*), rb(*)
    end subroutine svrgn
    subroutine svrgp(n, ra, rb, iperm)
      integer, intent(in) :: n
      real :: ra(*), rb(*)
      integer, intent(inout) :: iperm(*)
    end subroutine svrgp
    subroutine svrbn(n, ra, rb)
      integer, intent(in) :: n
      real :: ra(*), rb(*)
    end subroutine svrbn
    subroutine svrbp(n, ra, rb, iperm)
      integer, intent(in) :: n
      real :: ra(*), rb(*)
      integer, intent(inout) :: iperm(*)
    end subroutine svrbp
    subroutine svign(n, ia, ib)
      integer, intent(in) :: n
      integer :: ia(*), ib(*)
    end subroutine svign
    subroutine svigp(n, ia, ib, iperm)
      integer, intent(in) :: n
      integer :: ia(*), ib(*)
      integer, intent(inout) :: iperm(*)
    end subroutine svigp
    subroutine svibn(n, ia, ib)
      integer, intent(in) :: n
      integer :: ia(*), ib(*)
    end subroutine svibn
    subroutine svibp(n, ia, ib, iperm)
      integer, intent(in) :: n
      integer :: ia(*), ib(*)
      integer, intent(inout) :: iperm(*)
    end subroutine svibp
    subroutine permu(n, x, ipermu, ipath, xpermu)
      integer, intent(in) :: n, ipermu(*), ipath
      real :: x(*), xpermu(*)
    end subroutine permu
    subroutine perma(nra, nca, a, lda, ipermu, ipath, aper, ldaper)
      integer, intent(in) :: nra, nca, lda, ipermu(*), ipath, ldaper
      real :: a(lda, *), aper(ldaper, *)
    end subroutine perma
    subroutine p2rma(nra, nca, a, lda, ipermu, ipath, aper, ldaper, work)
      integer, intent(in) :: nra, nca, lda, ipermu(*), ipath, ldaper
      real :: a(lda, *), aper(ldaper, *)
      real, intent(inout) :: work(*)
    end subroutine p2rma
    subroutine dsvrgn(n, ra, rb)
      integer, intent(in) :: n
      double precision :: ra(*), rb(*)
    end subroutine dsvrgn
    subroutine dsvrgp(n, ra, rb, iperm)
      integer, intent(in) :: n
      double precision :: ra(*), rb(*)
      integer, intent(inout) :: iperm(*)
    end subroutine dsvrgp
    subroutine dsvrbn(n, ra, rb)
      integer, intent(in) :: n
      double precision :: ra(*), rb(*)
    end subroutine dsvrbn
    subroutine dsvrbp(n, ra, rb, iperm)
      integer, intent(in) :: n
      double precision :: ra(*), rb(*)
      integer, intent(inout) :: iperm(*)
    end subroutine dsvrbp
    subroutine dpermu(n, x, ipermu, ipath, xpermu)
      integer, intent(in) :: n, ipermu(*), ipath
      double precision :: x(*), xpermu(*)
    end subroutine dpermu
    subroutine dperma(nra, nca, a, lda, ipermu, ipath, aper, ldaper)
      integer, intent(in) :: nra, nca, lda, ipermu(*), ipath, ldaper
      double precision :: a(lda, *), aper(ldaper, *)
    end subroutine dperma
    subroutine dp2rma(nra, nca, a, lda, ipermu, ipath, aper, ldaper, work)
      integer, intent(in) :: nra, nca, lda, ipermu(*), ipath, ldaper
      double precision :: a(lda, *), aper(ldaper, *)
      double precision, intent(inout) :: work(*)
    end subroutine dp2rma
  end interface
end module orvel_util
