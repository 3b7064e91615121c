! examples/beam/beam.f90 - deflection of a beam on two supports: differences of the fourth order, a band system
!
!     beam_f90 [plot.dat]
!
! E I w'''' = q, with w = w'' = 0 at both ends. The fourth difference is the second difference of the second one, so
! that 6 on the diagonal is 5 beside the supports.
program beam
  use orvel
  use checks
  implicit none
  integer, parameter :: n = 199, kd = 2, lda = 2 * kd + 1, ldfac = 3 * kd + 1
  double precision, parameter :: modulus = 210d9, moment = 1943d-8, load = 5d3, length = 6
  double precision :: a(lda, n), fact(ldfac, n), w(n), b(n), rcond, h, x, exact
  integer :: ipvt(n), i, unit, ios
  character(256) :: plot

  h = length / (n + 1)
  a(1, :) = 1; a(2, :) = -4; a(3, :) = 6; a(4, :) = -4; a(5, :) = 1
  a(3, 1) = 5; a(3, n) = 5
  b = load * h**4 / (modulus * moment)
  call lsarb(n, a, lda, kd, kd, b, 1, w)
  call lfcrb(n, a, lda, kd, kd, fact, ldfac, ipvt, rcond)

  print "(a, i0, a, es8.1)", " points: ", n, ", reciprocal of the condition ", rcond
  print "(a)", "  place, m  deflection, mm  of the theory"
  do i = 20, n, 20
    x = i * h
    print "(f9.2, f13.4, f16.4)", x, 1d3 * w(i), 1d3 * theory(x)
  end do
  call get_command_argument(1, plot, status=ios)
  if (ios == 0) then
    open (newunit=unit, file=plot, action="write")
    do i = 1, n
      x = i * h
      write (unit, "(3es16.8)") x, 1d3 * w(i), 1d3 * theory(x)
    end do
    close (unit)
  end if
  exact = 5 * load * length**4 / (384 * modulus * moment)
  print *
  call check("deflection in the middle, mm", 1d3 * w((n + 1) / 2), 1d3 * exact, 2d-3, 4, "theory of the beam")
  call check("sum of the forces of the supports, kN", 1d-3 * (shear(1) + shear(2)), 1d-3 * load * length, 5d-2, 3, &
             "the load")
contains
  double precision function theory(x)
    double precision, intent(in) :: x
    theory = load * x * (length**3 - 2 * length * x**2 + x**3) / (24 * modulus * moment)
  end function theory

  ! The third difference at an end, times the stiffness; w(0) = 0, w(-1) = -w(1). Half of a step's load is missing.
  double precision function shear(which)
    integer, intent(in) :: which
    double precision :: e(3)
    e = merge(w(1:3), w(n:n - 2:-1), which == 1)
    shear = modulus * moment * (2 * e(1) - e(2)) / h**3 + load * h / 2
  end function shear
end program beam
