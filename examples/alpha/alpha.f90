! examples/alpha/alpha.f90 - a Poisson law fitted to counts of alpha particles, from Fortran
!
!     alpha_f90 counts.txt
!
! The same table as alpha.c prints.
program alpha
  use checks
  use orvel_frame
  use orvel_special
  implicit none
  integer, parameter :: most_classes = 100
  double precision :: observed(0:most_classes - 1) = 0d0
  character(200) :: path, line
  integer :: classes = 0, particles, intervals, unit, status

  call get_command_argument(1, path)
  open (newunit=unit, file=trim(path), status="old", action="read", iostat=status)
  if (status /= 0) stop "usage: alpha_f90 counts.txt"
  do
    read (unit, "(a)", iostat=status) line
    if (status /= 0) exit
    if (line(1:1) == "#") cycle
    read (line, *, iostat=status) particles, intervals
    if (status /= 0) cycle
    observed(particles) = intervals
    classes = max(classes, particles + 1)
  end do
  close (unit)

  call fit(observed(0:classes - 1))
  call catch_errors()

contains

  ! P(k) = exp(-m) m^k / k!, through the logarithm of the gamma function.
  double precision function poisson(mean, k)
    double precision, intent(in) :: mean
    integer, intent(in) :: k
    poisson = exp(k*log(mean) - mean - alngam(k + 1.0))
  end function poisson

  subroutine fit(observed)
    double precision, intent(in) :: observed(0:)
    double precision :: mean, total, p, expected, chi_square, rest, tail
    integer :: k, used
    total = sum(observed)
    mean = sum([(k*observed(k), k=0, ubound(observed, 1))])
    print "(1x,i0,a,i0,a,f6.4,a)", nint(mean), " particles in ", nint(total), " intervals, ", mean/total, &
      " in the mean"
    mean = mean/total
    print "(/,a)", " particles  observed  expected"
    chi_square = 0
    rest = total
    tail = 1
    used = 0
    do k = 0, ubound(observed, 1)
      p = poisson(mean, k)
      expected = total*p
      print "(i10,i10,f10.1)", k, nint(observed(k)), expected
      if (expected < 10) cycle
      chi_square = chi_square + (observed(k) - expected)**2/expected
      rest = rest - observed(k)
      tail = tail - p
      used = used + 1
    end do
    chi_square = chi_square + (rest - total*tail)**2/(total*tail)
    print "(/,a,f7.2,a,i0,a)", " chi-square", chi_square, " with ", used + 1 - 2, " degrees of freedom"
    call check("particles in an interval", mean, 3.87d0, 0.005d0, 4, "the authors' mean, 1910")
  end subroutine fit

  subroutine catch_errors()
    real, parameter :: arguments(2) = [-2.0005, -3.0]
    real :: value
    integer :: k, type, code
    call erset(0, 0, 0) ! print nothing, stop at nothing
    print *
    do k = 1, 2
      value = gamma(arguments(k))
      type = n1rty(1)
      code = n1rcd(1)
      if (type < 4) then
        print "(a,f8.4,2(a,i0),a,f8.3)", " GAMMA(", arguments(k), "): type ", type, ", code ", code, &
          ", value ", value
      else
        print "(a,f8.4,2(a,i0),a)", " GAMMA(", arguments(k), "): type ", type, ", code ", code, ", no value"
      end if
    end do
  end subroutine catch_errors
end program alpha
