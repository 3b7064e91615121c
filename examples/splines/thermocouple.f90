! examples/splines/thermocouple.f90 - temperatures from the voltages of a thermocouple, from Fortran
!
!     thermocouple_f90 thermocouple_k.txt
!
! The table is interpolated the other way, temperature over voltage; every voltage of the table gives its temperature.
program thermocouple
  use checks
  use orvel_interp
  use orvel_util
  implicit none
  integer, parameter :: room = 100
  character(200) :: path, line
  double precision :: t(room), v(room), brkpt(room), spcoef(4, room), worst, at_ten, polynomial
  ! From 0 to 500 degrees, temperature by millivolts, off by at most 0.05 degrees (NIST Monograph 175, 1993).
  double precision, parameter :: inverse(9) = [2.508355d1, 7.860106d-2, -2.503131d-1, 8.315270d-2, -1.228034d-2, &
      9.804036d-4, -4.413030d-5, 1.057734d-6, -1.052755d-8]
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
  at_ten = dcsval(10d0, n - 1, brkpt, spcoef)
  print "(a,f8.3,a,es8.1)", " 10 millivolts are ", at_ten, " degrees; the table is met within ", worst
  polynomial = 0
  do k = size(inverse), 1, -1
    polynomial = (polynomial + inverse(k))*10
  end do
  call check("degrees at 10 millivolts", at_ten, polynomial, 0.05d0, 3, "the inverse polynomial of the standards")
end program thermocouple
