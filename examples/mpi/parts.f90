! examples/mpi/parts.f90 - a problem in parts that may be computed anywhere: by ranks of MPI or by threads
!
! Every part has a stream of random numbers, an integral of a family and a linear system of its own. What a part gives
! depends on its number alone, and the parts are added in their order; so the total has the same bits however many
! workers there are.
module parts_of_problem
  use orvel
  use, intrinsic :: iso_c_binding
  implicit none
  integer, parameter :: parts = 48, numbers = 100000, order = 40, results = 3
  double precision, private :: bessel_argument  ! the integrand has no argument of its own for it
  !$omp threadprivate(bessel_argument)

contains

  ! Points of a stream in the quarter of the unit circle. Seeds of option 5 that RNISD makes are 100000 numbers apart.
  double precision function points_in_circle(part)
    integer, intent(in) :: part
    double precision, allocatable :: r(:)
    integer :: seed, k
    seed = 123457
    call rnopt(5)
    do k = 2, part
      call rnisd(seed, seed)
    end do
    call rnset(seed)
    allocate (r(numbers))
    call drnun(numbers, r)
    points_in_circle = count(r(1::2)**2 + r(2::2)**2 < 1)
  end function points_in_circle

  double precision function integrand(t)
    double precision, intent(in) :: t
    integrand = exp(bessel_argument*cos(t))
  end function integrand

  ! The modified Bessel function I0(x) = 1/pi integral of exp(x cos t) over 0..pi.
  double precision function bessel_integral(part)
    integer, intent(in) :: part
    double precision, parameter :: pi = 3.14159265358979323846d0
    double precision :: estimate
    bessel_argument = 0.125d0*part
    call dqdags(integrand, 0d0, pi, 0d0, 1d-12, bessel_integral, estimate)
    bessel_integral = bessel_integral/pi
  end function bessel_integral

  ! The sum of the solution of a system whose matrix is 1 / (1 + |i - j|), with the diagonal made larger part by part.
  double precision function solution_sum(part)
    integer, intent(in) :: part
    double precision :: a(order, order), b(order), x(order)
    integer :: i, j
    do j = 1, order
      do i = 1, order
        a(i, j) = 1d0/(1 + abs(i - j))
      end do
      a(j, j) = a(j, j) + 0.0625d0*(part - 1)
    end do
    b = 1
    call dlsarg(order, a, order, b, 1, x)
    solution_sum = 0
    do i = 1, order
      solution_sum = solution_sum + x(i)
    end do
  end function solution_sum

  function computed(part) result(values)
    integer, intent(in) :: part
    double precision :: values(results)
    values = [points_in_circle(part), bessel_integral(part), solution_sum(part)]
  end function computed

  subroutine print_totals(values)
    double precision, intent(in) :: values(results, parts)
    double precision :: total(results)
    integer :: part
    total = 0
    do part = 1, parts
      total = total + values(:, part)
    end do
    print "(a,i0,a)", " ", parts, " parts"
    print "(a,i0,a,i0,a,f8.5)", " streams    ", nint(total(1)), " of ", parts*numbers/2, &
      " points in the circle: pi is about", 8*total(1)/(dble(parts)*numbers)
    print "(a,es24.16)", " integrals  sum of I0(k / 8)     ", total(2)
    print "(a,es24.16)", " systems    sum of all solutions ", total(3)
  end subroutine print_totals
end module parts_of_problem
