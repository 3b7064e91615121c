! examples/regression/regression.f90 - a hard regression as one linear system: refinement, condition, inverse
!
!     regression_f90 longley.txt [plot.dat]
!
! Least squares for y = X*b without forming X^T*X, which would square the condition: residuals r and coefficients
! b solve
!
!     ( I    X ) (r)   (y)
!     ( X^T  0 ) (b) = (0)
!
! (A. Bjorck, Iterative refinement of linear least squares solutions, 1967). The inverse of this matrix holds
! -(X^T*X)^-1, from which the standard errors follow. Then Hilbert matrices show the warnings.
program regression
  use checks
  use orvel_frame
  use orvel_linsys
  implicit none

  integer, parameter :: cases = 16, terms = 7, n = cases + terms
  character(*), parameter :: names(terms) = [character(12) :: 'constant', 'deflator', 'product', 'unemployed', &
      'armed forces', 'population', 'year']
  ! Coefficients certified to 15 digits by a national standards body.
  double precision, parameter :: certified(terms) = [-3482258.63459582d0, 15.0618722713733d0, &
      -0.358191792925910d-1, -2.02022980381683d0, -1.03322686717359d0, -0.511041056535807d-1, 1829.15146461355d0]
  double precision :: a(n, n), rhs(n), plain(n), refined(n), fact(n, n), inverse(n, n), rcond, det1, det2, sigma
  integer :: ipvt(n), k

  call read_system
  call dlslrg(n, a, n, rhs, 1, plain)
  call dlsarg(n, a, n, rhs, 1, refined)
  call dlfcrg(n, a, n, fact, n, ipvt, rcond)
  call dlfdrg(n, fact, n, ipvt, det1, det2)
  print '(a, es9.2)', ' reciprocal condition number', rcond
  print '(a, f9.6, a, f4.0)', ' determinant', det1, ' * 10 **', det2

  call dlinrg(n, a, n, inverse, n)
  sigma = sqrt(sum(refined(1:cases)**2) / (cases - terms))
  print '(/, a)', '                  coefficient  standard error   right digits: plain  refined'
  do k = 1, terms
    print '(1x, a12, f17.6, f16.6, f21.1, f9.1)', names(k), refined(cases + k), &
        sigma * sqrt(-inverse(cases + k, cases + k)), digits_of(plain(cases + k), certified(k)), &
        digits_of(refined(cases + k), certified(k))
  end do
  print '(a, f10.4, /)', ' residual standard deviation', sigma
  ! Certified in the same place.
  call check('residual standard deviation', sigma, 304.854073561965d0, 1d-9, 9, 'certified by a standards body')
  call hilbert
  call write_plot

contains

  subroutine read_system
    character(200) :: file, line
    double precision :: row(terms)
    integer :: unit, status, i
    call get_command_argument(1, file)
    open (newunit=unit, file=file, status='old', action='read')
    a = 0
    rhs = 0
    i = 0
    do
      read (unit, '(a)', iostat=status) line
      if (status /= 0) exit
      if (line(1:1) == '#') cycle
      i = i + 1
      read (line, *) row
      rhs(i) = row(1)
      a(i, i) = 1
      a(i, cases + 1) = 1
      a(i, cases + 2:n) = row(2:terms)
      a(cases + 1:n, i) = a(i, cases + 1:n)
    end do
    close (unit)
  end subroutine read_system

  ! Residuals by year, then the right digits of each coefficient.
  subroutine write_plot
    character(200) :: file
    integer :: unit
    call get_command_argument(2, file)
    if (file == '') return
    open (newunit=unit, file=file, action='write')
    write (unit, '(f6.0, f10.2)') (a(k, n), refined(k), k=1, cases)
    write (unit, '(/)')
    write (unit, '(3a, 2f6.1)') ('"', trim(names(k)), '"', digits_of(plain(cases + k), certified(k)), &
      digits_of(refined(cases + k), certified(k)), k=1, terms)
    close (unit)
  end subroutine write_plot

  double precision function digits_of(x, exact)
    double precision, intent(in) :: x, exact
    digits_of = min(15d0, -log10(max(abs(x - exact) / abs(exact), 1d-16)))
  end function digits_of

  ! Warnings are not printed but read: IERCD is the code of the routine that returned last, N1RTY(1) its type.
  subroutine hilbert
    real, allocatable :: h(:, :), b(:), x(:)
    integer :: m, i, j
    call erset(3, 0, -1)
    print '(/, a)', ' Hilbert systems in single precision, solution 1, 1, ..., 1'
    print '(a)', '  n  largest error'
    do m = 2, 9
      allocate (h(m, m), b(m), x(m))
      do j = 1, m
        do i = 1, m
          h(i, j) = 1.0 / (i + j - 1)
        end do
      end do
      b = matmul(h, spread(1.0, 1, m))
      call lsarg(m, h, m, b, 1, x)
      if (n1rty(1) == 0) then
        print '(i3, es12.1)', m, maxval(abs(x - 1))
      else
        print '(i3, es12.1, 2(a, i0))', m, maxval(abs(x - 1)), '  LSARG: type ', n1rty(1), ', code ', iercd()
      end if
      deallocate (h, b, x)
    end do
    call erset(3, 2, 2)
  end subroutine hilbert
end program regression
