! examples/isotherm/isotherm.f90 - volumes of a van der Waals gas: zeros of a cubic that become a double zero
!
!     isotherm_f90 van_der_waals.txt [plot.dat]
!
! At nine tenths of the critical temperature a van der Waals gas has three volumes for one pressure. Where the
! isotherm has its minimum, two of them become one: the liquid cannot be stretched any further.
module gas
  implicit none
  double precision, parameter :: r = 0.0831446261815324d0  ! L bar / (mol K)
  double precision :: a, b, t, p
contains
  double precision function slope(v)  ! of the isotherm, times -v**3 (v - b)**2 / (r t)
    double precision, intent(in) :: v
    slope = v**3 - 2*a/(r*t)*(v - b)**2
  end function slope
  double precision function pressure(v)
    double precision, intent(in) :: v
    pressure = r*t/(v - b) - a/v**2
  end function pressure
  double precision function cubic(v)
    double precision, intent(in) :: v
    cubic = ((p*v - p*b - r*t)*v + a)*v - a*b
  end function cubic
end module gas

program isotherm
  use gas
  use checks
  use orvel_zeros
  implicit none
  character(200) :: line
  character(200) :: plot
  character(16) :: name
  double precision :: v(3), turn(2), least, by_zeros, by_coefficients
  integer :: info(3), lines, state
  call get_command_argument(1, line)
  open (10, file=line, status='old')
  call get_command_argument(2, plot)
  by_zeros = 1
  by_coefficients = 1
  print '(a)', ' gas               T, K  p, bar  volumes, L/mol' // repeat(' ', 21) // 'iterations'
  do lines = 1, 1000
    read (10, '(a)', iostat=state) line
    if (state /= 0) exit
    if (line(1:1) == '#') cycle
    read (line, *) name, a, b
    t = 0.9d0*8*a/(27*r*b)
    ! The turning points of the isotherm, and a pressure between theirs.
    call dzreal(slope, 1d-16, 1d-12, 1d-4*b, 1d-2*b, 2, 60, [1.5d0*b, 5*b], turn, info)
    least = pressure(minval(turn))
    p = 0.5d0*(max(least, 0d0) + pressure(maxval(turn)))
    call dzreal(cubic, 1d-16, 1d-12, 1d-4*b, 1d-2*b, 3, 60, [1.5d0*b, 3*b, 9*b], v, info)
    print '(1x, a16, f6.1, f8.2, 3f12.7, 3i4)', name, t, p, v, info
    ! The sum of the zeros stands in the coefficients.
    if (abs(sum(v) - (b + r*t/p)) >= abs(by_zeros - by_coefficients)) then
      by_zeros = sum(v)
      by_coefficients = b + r*t/p
    end if
    if (plot /= '' .and. name == 'carbon_dioxide') call write_plot
    p = least
    ! Both searches start from the same guess; a double zero is found to half the digits.
    call dzreal(cubic, 1d-16, 1d-6, 1d-9*b, 1d-3*b, 3, 60, [1.5d0*b, 1.5d0*b, 9*b], v, info)
    print '(1x, a16, f6.1, f8.2, 3f12.7, 3i4)', '  double zero', t, p, v, info
    print '(30x, a, f12.7)', ' at', minval(turn)
  end do
  print *
  call check('sum of three volumes, where it is farthest off', by_zeros, by_coefficients, 1d-10, 12, &
    'coefficients of the cubic')
contains
  ! The isotherm, then the volumes at one pressure, then its turning points.
  subroutine write_plot
    integer :: unit, k
    double precision :: volume
    open (newunit=unit, file=plot, action='write')
    do k = 0, 300
      volume = 1.45d0*b*(19/1.45d0)**(k/300d0)
      write (unit, '(2f14.7)') volume, pressure(volume)
    end do
    write (unit, '(/)')
    write (unit, '(2f14.7)') (v(k), p, k=1, 3)
    write (unit, '(/)')
    write (unit, '(2f14.7)') (turn(k), pressure(turn(k)), k=1, 2)
    close (unit)
  end subroutine write_plot
end program isotherm
