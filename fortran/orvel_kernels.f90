! fortran/orvel_kernels.f90 - interfaces of the vector and matrix kernels
!
! The standard kernels need liborvel_blas beside liborvel, the library's own utilities do not.
module orvel_kernels
  implicit none
  public

  interface
    ! level 1
    subroutine saxpy(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      real, intent(in) :: a, x(*)
      real, intent(inout) :: y(*)
    end subroutine saxpy
    subroutine daxpy(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      double precision, intent(in) :: a, x(*)
      double precision, intent(inout) :: y(*)
    end subroutine daxpy
    subroutine caxpy(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(in) :: a, x(*)
      complex, intent(inout) :: y(*)
    end subroutine caxpy
    subroutine zaxpy(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex(kind(0d0)), intent(in) :: a, x(*)
      complex(kind(0d0)), intent(inout) :: y(*)
    end subroutine zaxpy
    subroutine scopy(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      real, intent(in) :: x(*)
      real, intent(inout) :: y(*)
    end subroutine scopy
    subroutine dcopy(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      double precision, intent(in) :: x(*)
      double precision, intent(inout) :: y(*)
    end subroutine dcopy
    subroutine ccopy(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(in) :: x(*)
      complex, intent(inout) :: y(*)
    end subroutine ccopy
    subroutine zcopy(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex(kind(0d0)), intent(in) :: x(*)
      complex(kind(0d0)), intent(inout) :: y(*)
    end subroutine zcopy
    subroutine sscal(n, a, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: a
      real, intent(inout) :: x(*)
    end subroutine sscal
    subroutine dscal(n, a, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: a
      double precision, intent(inout) :: x(*)
    end subroutine dscal
    subroutine cscal(n, a, x, incx)
      integer, intent(in) :: n, incx
      complex, intent(in) :: a
      complex, intent(inout) :: x(*)
    end subroutine cscal
    subroutine zscal(n, a, x, incx)
      integer, intent(in) :: n, incx
      complex(kind(0d0)), intent(in) :: a
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine zscal
    subroutine csscal(n, a, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: a
      complex, intent(inout) :: x(*)
    end subroutine csscal
    subroutine zdscal(n, a, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: a
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine zdscal
    subroutine sswap(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      real, intent(inout) :: x(*), y(*)
    end subroutine sswap
    subroutine dswap(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      double precision, intent(inout) :: x(*), y(*)
    end subroutine dswap
    subroutine cswap(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(inout) :: x(*), y(*)
    end subroutine cswap
    subroutine zswap(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex(kind(0d0)), intent(inout) :: x(*), y(*)
    end subroutine zswap
    real function sdot(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      real, intent(in) :: x(*), y(*)
    end function sdot
    double precision function ddot(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      double precision, intent(in) :: x(*), y(*)
    end function ddot
    complex function cdotu(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(in) :: x(*), y(*)
    end function cdotu
    complex(kind(0d0)) function zdotu(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex(kind(0d0)), intent(in) :: x(*), y(*)
    end function zdotu
    complex function cdotc(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(in) :: x(*), y(*)
    end function cdotc
    complex(kind(0d0)) function zdotc(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex(kind(0d0)), intent(in) :: x(*), y(*)
    end function zdotc
    double precision function dsdot(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      real, intent(in) :: x(*), y(*)
    end function dsdot
    real function sdsdot(n, sb, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      real, intent(in) :: sb, x(*), y(*)
    end function sdsdot
    real function snrm2(n, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: x(*)
    end function snrm2
    double precision function dnrm2(n, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: x(*)
    end function dnrm2
    real function scnrm2(n, x, incx)
      integer, intent(in) :: n, incx
      complex, intent(in) :: x(*)
    end function scnrm2
    double precision function dznrm2(n, x, incx)
      integer, intent(in) :: n, incx
      complex(kind(0d0)), intent(in) :: x(*)
    end function dznrm2
    real function sasum(n, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: x(*)
    end function sasum
    double precision function dasum(n, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: x(*)
    end function dasum
    real function scasum(n, x, incx)
      integer, intent(in) :: n, incx
      complex, intent(in) :: x(*)
    end function scasum
    double precision function dzasum(n, x, incx)
      integer, intent(in) :: n, incx
      complex(kind(0d0)), intent(in) :: x(*)
    end function dzasum
    integer function isamax(n, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: x(*)
    end function isamax
    integer function idamax(n, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: x(*)
    end function idamax
    integer function icamax(n, x, incx)
      integer, intent(in) :: n, incx
      complex, intent(in) :: x(*)
    end function icamax
    integer function izamax(n, x, incx)
      integer, intent(in) :: n, incx
      complex(kind(0d0)), intent(in) :: x(*)
    end function izamax
    subroutine srot(n, x, incx, y, incy, c, s)
      integer, intent(in) :: n, incx, incy
      real, intent(inout) :: x(*), y(*)
      real, intent(in) :: c, s
    end subroutine srot
    subroutine drot(n, x, incx, y, incy, c, s)
      integer, intent(in) :: n, incx, incy
      double precision, intent(inout) :: x(*), y(*)
      double precision, intent(in) :: c, s
    end subroutine drot
    subroutine csrot(n, x, incx, y, incy, c, s)
      integer, intent(in) :: n, incx, incy
      complex, intent(inout) :: x(*), y(*)
      real, intent(in) :: c, s
    end subroutine csrot
    subroutine zdrot(n, x, incx, y, incy, c, s)
      integer, intent(in) :: n, incx, incy
      complex(kind(0d0)), intent(inout) :: x(*), y(*)
      double precision, intent(in) :: c, s
    end subroutine zdrot
    subroutine srotg(a, b, c, s)
      real, intent(inout) :: a, b
      real, intent(inout) :: c, s
    end subroutine srotg
    subroutine drotg(a, b, c, s)
      double precision, intent(inout) :: a, b
      double precision, intent(inout) :: c, s
    end subroutine drotg
    subroutine srotm(n, x, incx, y, incy, param)
      integer, intent(in) :: n, incx, incy
      real, intent(inout) :: x(*), y(*)
      real, intent(in) :: param(5)
    end subroutine srotm
    subroutine drotm(n, x, incx, y, incy, param)
      integer, intent(in) :: n, incx, incy
      double precision, intent(inout) :: x(*), y(*)
      double precision, intent(in) :: param(5)
    end subroutine drotm
    subroutine csrotm(n, x, incx, y, incy, param)
      integer, intent(in) :: n, incx, incy
      complex, intent(inout) :: x(*), y(*)
      real, intent(in) :: param(5)
    end subroutine csrotm
    subroutine zdrotm(n, x, incx, y, incy, param)
      integer, intent(in) :: n, incx, incy
      complex(kind(0d0)), intent(inout) :: x(*), y(*)
      double precision, intent(in) :: param(5)
    end subroutine zdrotm
    subroutine srotmg(d1, d2, x1, y1, param)
      real, intent(inout) :: d1, d2, x1
      real, intent(in) :: y1
      real, intent(inout) :: param(5)
    end subroutine srotmg
    subroutine drotmg(d1, d2, x1, y1, param)
      double precision, intent(inout) :: d1, d2, x1
      double precision, intent(in) :: y1
      double precision, intent(inout) :: param(5)
    end subroutine drotmg
    ! vector utilities and accumulators
    subroutine sset(n, a, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: a
      real, intent(inout) :: x(*)
    end subroutine sset
    subroutine dset(n, a, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: a
      double precision, intent(inout) :: x(*)
    end subroutine dset
    subroutine cset(n, a, x, incx)
      integer, intent(in) :: n, incx
      complex, intent(in) :: a
      complex, intent(inout) :: x(*)
    end subroutine cset
    subroutine zset(n, a, x, incx)
      integer, intent(in) :: n, incx
      complex(kind(0d0)), intent(in) :: a
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine zset
    subroutine svcal(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      real, intent(in) :: a, x(*)
      real, intent(inout) :: y(*)
    end subroutine svcal
    subroutine dvcal(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      double precision, intent(in) :: a, x(*)
      double precision, intent(inout) :: y(*)
    end subroutine dvcal
    subroutine cvcal(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(in) :: a, x(*)
      complex, intent(inout) :: y(*)
    end subroutine cvcal
    subroutine zvcal(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex(kind(0d0)), intent(in) :: a, x(*)
      complex(kind(0d0)), intent(inout) :: y(*)
    end subroutine zvcal
    subroutine csvcal(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      real, intent(in) :: a
      complex, intent(in) :: x(*)
      complex, intent(inout) :: y(*)
    end subroutine csvcal
    subroutine zdvcal(n, a, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      double precision, intent(in) :: a
      complex(kind(0d0)), intent(in) :: x(*)
      complex(kind(0d0)), intent(inout) :: y(*)
    end subroutine zdvcal
    subroutine sadd(n, a, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: a
      real, intent(inout) :: x(*)
    end subroutine sadd
    subroutine dadd(n, a, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: a
      double precision, intent(inout) :: x(*)
    end subroutine dadd
    subroutine cadd(n, a, x, incx)
      integer, intent(in) :: n, incx
      complex, intent(in) :: a
      complex, intent(inout) :: x(*)
    end subroutine cadd
    subroutine zadd(n, a, x, incx)
      integer, intent(in) :: n, incx
      complex(kind(0d0)), intent(in) :: a
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine zadd
    subroutine ssub(n, a, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: a
      real, intent(inout) :: x(*)
    end subroutine ssub
    subroutine dsub(n, a, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: a
      double precision, intent(inout) :: x(*)
    end subroutine dsub
    subroutine csub(n, a, x, incx)
      integer, intent(in) :: n, incx
      complex, intent(in) :: a
      complex, intent(inout) :: x(*)
    end subroutine csub
    subroutine zsub(n, a, x, incx)
      integer, intent(in) :: n, incx
      complex(kind(0d0)), intent(in) :: a
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine zsub
    real function ssum(n, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: x(*)
    end function ssum
    double precision function dsum(n, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: x(*)
    end function dsum
    real function sxyz(n, x, incx, y, incy, z, incz)
      integer, intent(in) :: n, incx, incy, incz
      real, intent(in) :: x(*), y(*), z(*)
    end function sxyz
    double precision function dxyz(n, x, incx, y, incy, z, incz)
      integer, intent(in) :: n, incx, incy, incz
      double precision, intent(in) :: x(*), y(*), z(*)
    end function dxyz
    subroutine shprod(n, x, incx, y, incy, z, incz)
      integer, intent(in) :: n, incx, incy, incz
      real, intent(in) :: x(*), y(*)
      real, intent(inout) :: z(*)
    end subroutine shprod
    subroutine dhprod(n, x, incx, y, incy, z, incz)
      integer, intent(in) :: n, incx, incy, incz
      double precision, intent(in) :: x(*), y(*)
      double precision, intent(inout) :: z(*)
    end subroutine dhprod
    integer function isamin(n, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: x(*)
    end function isamin
    integer function idamin(n, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: x(*)
    end function idamin
    integer function icamin(n, x, incx)
      integer, intent(in) :: n, incx
      complex, intent(in) :: x(*)
    end function icamin
    integer function izamin(n, x, incx)
      integer, intent(in) :: n, incx
      complex(kind(0d0)), intent(in) :: x(*)
    end function izamin
    integer function ismax(n, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: x(*)
    end function ismax
    integer function idmax(n, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: x(*)
    end function idmax
    integer function ismin(n, x, incx)
      integer, intent(in) :: n, incx
      real, intent(in) :: x(*)
    end function ismin
    integer function idmin(n, x, incx)
      integer, intent(in) :: n, incx
      double precision, intent(in) :: x(*)
    end function idmin
    complex function czdotu(n, c, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(in) :: c, x(*), y(*)
    end function czdotu
    complex function czdotc(n, c, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(in) :: c, x(*), y(*)
    end function czdotc
    complex function czcdot(n, x, incx, y, incy)
      integer, intent(in) :: n, incx, incy
      complex, intent(in) :: x(*), y(*)
    end function czcdot
    subroutine dqini(a, acc)
      double precision, intent(in) :: a
      double precision, intent(inout) :: acc(2)
    end subroutine dqini
    subroutine dqadd(a, acc)
      double precision, intent(in) :: a
      double precision, intent(inout) :: acc(2)
    end subroutine dqadd
    subroutine dqmul(a, b, acc)
      double precision, intent(in) :: a, b
      double precision, intent(inout) :: acc(2)
    end subroutine dqmul
    subroutine dqsto(acc, a)
      double precision, intent(in) :: acc(2)
      double precision, intent(inout) :: a
    end subroutine dqsto
    subroutine zqini(a, acc)
      complex(kind(0d0)), intent(in) :: a
      complex(kind(0d0)), intent(inout) :: acc(2)
    end subroutine zqini
    subroutine zqadd(a, acc)
      complex(kind(0d0)), intent(in) :: a
      complex(kind(0d0)), intent(inout) :: acc(2)
    end subroutine zqadd
    subroutine zqmul(a, b, acc)
      complex(kind(0d0)), intent(in) :: a, b
      complex(kind(0d0)), intent(inout) :: acc(2)
    end subroutine zqmul
    subroutine zqsto(acc, a)
      complex(kind(0d0)), intent(in) :: acc(2)
      complex(kind(0d0)), intent(inout) :: a
    end subroutine zqsto
  end interface
end module orvel_kernels
