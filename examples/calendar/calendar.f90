! examples/calendar/calendar.f90 - days between the first and the last event of a file, from Fortran
!
!     calendar_f90 events.txt
program calendar
  use orvel_frame
  use orvel_util
  implicit none
  character(200) :: path, line
  integer :: day, month, year, number, first, last, known, refused, unit, status

  call get_command_argument(1, path)
  open (newunit=unit, file=trim(path), status="old", action="read", iostat=status)
  if (status /= 0) stop "usage: calendar_f90 events.txt"
  call erset(0, 0, 0) ! print nothing, stop at nothing
  first = huge(first)
  last = -huge(last)
  known = 0
  refused = 0
  do
    read (unit, "(a)", iostat=status) line
    if (status /= 0) exit
    if (line(1:1) == "#") cycle
    read (line, *, iostat=status) day, month, year
    if (status /= 0) cycle
    number = ndays(day, month, year)
    if (n1rty(1) > 1) then
      refused = refused + 1
      cycle
    end if
    known = known + 1
    first = min(first, number)
    last = max(last, number)
  end do
  close (unit)
  print "(1x,i0,a,i0,a,i0,a)", known, " events within ", last - first, " days, ", refused, " dates refused"
end program calendar
