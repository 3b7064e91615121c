! examples/checks.f90 - the lines by which a chapter compares a number of its own with what is known otherwise
!
! check.h prints the same from C and C++.
module checks
  implicit none
  private
  public :: check
contains

  ! Both numbers are shown with so many digits behind the point. A chapter ends where they do not agree.
  subroutine check(what, ours, known, within, digits, source)
    character(*), intent(in) :: what, source
    double precision, intent(in) :: ours, known, within
    integer, intent(in) :: digits
    logical :: agrees
    agrees = abs(ours - known) <= within
    print "(a)", " check: " // what // ":"
    print "(*(a))", "     ", shown(ours), ", known ", shown(known), " within ", shown(within), &
      " (", source, "): ", trim(merge("agrees ", "DIFFERS", agrees))
    if (.not. agrees) stop 1
  contains
    function shown(x) result(text)
      double precision, intent(in) :: x
      character(:), allocatable :: text
      character(40) :: form, number
      write (form, "(a,i0,a)") "(f40.", digits, ")"
      write (number, form) x
      text = trim(adjustl(number))
    end function shown
  end subroutine check
end module checks
