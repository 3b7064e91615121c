! examples/sunspots/sunspots.f90 - the period of the sunspots in the middle of the record, from Fortran
!
!     sunspots_f90 sunspots.txt
program sunspots
  use checks
  use orvel_fft
  implicit none
  integer, parameter :: n = 4096
  real, parameter :: pi = 3.14159265
  real :: x(n), c(n), back(n), power(n / 2 - 1)
  integer :: years, k, year, status
  character(200) :: path, line

  call get_command_argument(1, path)
  open (10, file=path, status='old')
  x = 0
  years = 0
  do
    read (10, '(a)', iostat=status) line
    if (status /= 0) exit
    if (line(1:1) == '#') cycle
    read (line, *) year, x(years + 1:years + 10)
    years = years + 10
  end do
  x(:years) = (x(:years) - sum(x(:years)) / years) * [(sin(pi * (k - 0.5) / years)**2, k = 1, years)]
  call fftrf(n, x, c)
  power = c(2:n - 2:2)**2 + c(3:n - 1:2)**2
  print '(a, f6.2, a)', ' with a window, the spectrum has its peak at', real(n) / maxloc(power, 1), ' years'
  call fftrb(n, c, back)
  call check('largest difference after transform and back', dble(maxval(abs(back / n - x))), 0d0, &
    16d0 * epsilon(x) * maxval(abs(x)), 5, 'the numbers, in single precision')
end program sunspots
