! tests/fortran/calls.f90 - calls as Fortran programs write them, with all modules in one scope
module capture
  use, intrinsic :: iso_c_binding, only: c_ptr, c_int32_t, c_size_t, c_char
  implicit none
  character(2000) :: printed = ' '
contains
  subroutine keep(context, unit, text, length) bind(c)
    type(c_ptr), value :: context
    integer(c_int32_t), value :: unit
    character(kind=c_char), intent(in) :: text(*)
    integer(c_size_t), value :: length
    integer(c_size_t) :: i
    printed = ' '
    do i = 1, min(length, len(printed, c_size_t))
      printed(i:i) = text(i)
    end do
    if (unit /= 6 .or. .not. storage_size(context) > 0) error stop 'writer'
  end subroutine keep

  double precision function square(x)
    double precision, intent(in) :: x
    square = x * x
  end function square
end module capture

! One name for all modules, and one for the precisions.
subroutine generic_names
  use orvel
  implicit none
  real :: x(2) = [3.0, 4.0], y(2) = 1.0
  double precision :: wide(2) = [3d0, 4d0], values(5), result, error
  complex(kind(0d0)) :: z(1) = (1d0, 2d0)
  interface
    double precision function cube(t)
      double precision, intent(in) :: t
    end function cube
  end interface
  call qdags(cube, 0d0, 2d0, 0d0, 1d-10, result, error)
  call orvel_axpy(2, 2.0, x, 1, y, 1)
  values = [orvel_nrm2(2, wide, 1), orvel_asum(1, z, 1), gamma(5d0), dble(gamma(5.0)), dble(amach(4)) / epsilon(x)]
  if (abs(result - 4) > 1d-12 .or. y(2) /= 9) error stop 'generic subroutines'
  if (any(abs(values - [5d0, 3d0, 24d0, 24d0, 1d0]) > 1d-5)) error stop 'generic functions'
end subroutine generic_names

double precision function cube(t)
  implicit none
  double precision, intent(in) :: t
  cube = t**3
end function cube

program calls
  use, intrinsic :: iso_c_binding, only: c_associated, c_funloc, c_int32_t, c_null_char, c_null_ptr
  use capture
  use amach_int
  use orvel_frame
  use orvel_fft
  use orvel_host
  use orvel_interp
  use orvel_kernels
  use orvel_linsys
  use orvel_matrices
  use orvel_optim
  use orvel_quad
  use orvel_random
  use orvel_special
  use orvel_util
  use orvel_zeros
  implicit none
  external :: generic_names

  call check(orvel_bind_unit(6_c_int32_t, c_funloc(keep), c_null_ptr) == 1, 'unit is bound')
  call erset(0, -1, 0)
  call check(orvel_use_level('none'//c_null_char) == 0, 'unknown level')
  call check(orvel_use_level() == 1, 'best level')
  call check(c_associated(orvel_level()), 'level in use')
  call quiet
  call literals
  call untouched
  call same_array
  call constants
  call packets
  call transforms
  call generic_names
  print '(a)', 'calls from Fortran: passed'

contains

  subroutine check(holds, what)
    logical, intent(in) :: holds
    character(*), intent(in) :: what
    if (holds) return
    print '(a)', what
    error stop 1
  end subroutine check

  ! What would stop is a value.
  subroutine quiet
    type(orvel_outcome), target :: outcome
    double precision :: value
    call erset(0, -1, 1)
    call orvel_begin_quiet(outcome)
    value = gamma(-3d0)
    call orvel_end_quiet(outcome)
    call erset(0, -1, 0)
    call check(value /= value .and. outcome%severity == 5 .and. outcome%code == 6, 'quiet outcome')
    call check(all(outcome%routine(:7) == [character(1) :: 'D', 'G', 'A', 'M', 'M', 'A', c_null_char]), 'quiet name')
  end subroutine quiet

  ! Numbers and texts in places that are written only when another argument says so; results that are -1 or 0.
  subroutine literals
    integer :: unit, kept
    character(6) :: name
    call umach(-3, 9)
    call umach(3, unit)
    call check(unit == 9, 'umach')
    call umach(-3, 6)
    call e1pos(4, 1, 0)
    call check(e1mem('SET', 2, 17, 'LAPACK') == 0, 'e1mem stores')
    call check(e1mem('GET', 2, kept, name) == -1 .and. kept == 17 .and. name == 'LAPACK', 'e1mem reads')
    call check(l1ame('t', 'T') == -1, 'l1ame of the same letter')
    call check(l1ame('t', 'N') == 0, 'l1ame of two letters')
  end subroutine literals

  ! A routine that fails leaves its results as they are, whatever the optimiser thinks of them.
  subroutine untouched
    double precision :: rcond, det1, det2, result, esterr, a(1, 1), bound
    integer :: ipvt(1)
    a = 1
    rcond = 2; det1 = 3; det2 = 4; result = 5; esterr = 6; ipvt = 7
    call dlfcrg(0, a, 1, a, 1, ipvt, rcond)
    call check(rcond == 2 .and. ipvt(1) == 7, 'rcond')
    call dlfdrg(0, a, 1, ipvt, det1, det2)
    call check(det1 == 3 .and. det2 == 4, 'det')
    bound = -1
    call dqdags(square, 0d0, 1d0, bound, bound, result, esterr)
    call check(n1rty(1) == 5, 'quadrature')
    call check(result == 5 .and. esterr == 6, 'result and esterr')
    call check(index(printed, 'DQDAGS') > 0, 'message is captured')
  end subroutine untouched

  ! X may be B, and AINV may be A.
  subroutine same_array
    real :: a(2, 2) = reshape([2., 0., 0., 4.], [2, 2]), b(2) = [2., 4.]
    call lsarg(2, a, 2, b, 1, b)
    call check(all(b == 1), 'x in place of b')
    call linrg(2, a, 2, a, 2)
    call check(a(1, 1) == .5 .and. a(2, 2) == .25, 'inverse in place')
  end subroutine same_array

  ! The array-style form beside the frame: the variable decides the precision.
  subroutine constants
    real :: single
    double precision :: double
    single = amach(4)
    double = amach(4)
    call check(srmach(4) == single, 'single constant')
    call check(drmach(4) == double, 'double constant')
    call check(dmach(4) == double .and. single > double, 'two precisions')
    call check(imach(7) == digits(single), 'imach')
  end subroutine constants

  subroutine packets
    type(s_epack) :: packet(7)
    packet%whole = 0
    call s_error_post(packet, 3)
    call check(index(printed, 'S_ERROR_POST') > 0, 's_error_post')
  end subroutine packets

  ! The second work vector is real in some programs and complex in others.
  subroutine transforms
    complex :: x(3) = [(1., 0.), (0., 0.), (0., 0.)], coef(3), work(3)
    real :: wfc(27), real_work(6)
    call fftci(3, wfc)
    call f2tcf(3, x, coef, wfc, work)
    call check(all(coef == 1), 'complex work vector')
    call f2tcb(3, coef, x, wfc, real_work)
    call check(abs(x(1) - 3) < 1e-6, 'real work vector')
  end subroutine transforms
end program calls
