! examples/splines/thermocouple.f90 - temperatures from the voltages of a thermocouple, from Fortran
!
!     thermocouple_f90 thermocouple_k.txt
!
! The table is interpolated the other way, temperature over voltage; every voltage of the table gives its temperature.
program thermocouple
  use orvel_interp
  use orvel_util
  implicit none
  integer, parameter :: room = 100
  character(200) :: path, line
  double precision :: t(room), v(room), brkpt(room), spcoef(4, room), worst
  integer :: n, unit, status, k

  call get_command_argument(1, path)
  open (newunit=unit, file=trim(path), status="old", action="read", iostat=status)
  if (status /= 0) stop "usage: thermocouple_f90 thermocouple_k.txt"
  n = 0
  do while (n < room)
    read (unit, "(a)", iostat=status) line
    if (status /= 0) exit
    if (line(1:1) == "#") cycle
    read (line, *) t(n + 1), v(n + 1)
    n = n + 1
  end do
  close (unit)
  call dcsint(n, v, t, brkpt, spcoef)
  worst = 0
  do k = 1, n
    worst = max(worst, abs(dcsval(v(k), n - 1, brkpt, spcoef) - t(k)))
  end do
  print "(a,f8.3,a,es8.1)", " 10 millivolts are ", dcsval(10d0, n - 1, brkpt, spcoef), &
    " degrees; the table is met within ", worst
end program thermocouple
