! fortran/orvel_matrices.f90 - interfaces of the standard matrix kernels; they need liborvel_blas beside liborvel
module orvel_matrices
  implicit none
  public

  interface
    integer function l1ame(ca, cb)
      character, intent(in) :: ca, cb
    end function l1ame
    subroutine sgemv(trans, m, n, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: trans
      integer, intent(in) :: m, n, lda, incx, incy
      real, intent(in) :: alpha, a(lda, *), x(*), beta
      real, intent(inout) :: y(*)
    end subroutine sgemv
    subroutine dgemv(trans, m, n, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: trans
      integer, intent(in) :: m, n, lda, incx, incy
      double precision, intent(in) :: alpha, a(lda, *), x(*), beta
      double precision, intent(inout) :: y(*)
    end subroutine dgemv
    subroutine cgemv(trans, m, n, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: trans
      integer, intent(in) :: m, n, lda, incx, incy
      complex, intent(in) :: alpha, a(lda, *), x(*), beta
      complex, intent(inout) :: y(*)
    end subroutine cgemv
    subroutine zgemv(trans, m, n, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: trans
      integer, intent(in) :: m, n, lda, incx, incy
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), x(*), beta
      complex(kind(0d0)), intent(inout) :: y(*)
    end subroutine zgemv
    subroutine sgbmv(trans, m, n, kl, ku, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: trans
      integer, intent(in) :: m, n, kl, ku, lda, incx, incy
      real, intent(in) :: alpha, a(lda, *), x(*), beta
      real, intent(inout) :: y(*)
    end subroutine sgbmv
    subroutine dgbmv(trans, m, n, kl, ku, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: trans
      integer, intent(in) :: m, n, kl, ku, lda, incx, incy
      double precision, intent(in) :: alpha, a(lda, *), x(*), beta
      double precision, intent(inout) :: y(*)
    end subroutine dgbmv
    subroutine cgbmv(trans, m, n, kl, ku, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: trans
      integer, intent(in) :: m, n, kl, ku, lda, incx, incy
      complex, intent(in) :: alpha, a(lda, *), x(*), beta
      complex, intent(inout) :: y(*)
    end subroutine cgbmv
    subroutine zgbmv(trans, m, n, kl, ku, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: trans
      integer, intent(in) :: m, n, kl, ku, lda, incx, incy
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), x(*), beta
      complex(kind(0d0)), intent(inout) :: y(*)
    end subroutine zgbmv
    subroutine ssymv(uplo, n, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: uplo
      integer, intent(in) :: n, lda, incx, incy
      real, intent(in) :: alpha, a(lda, *), x(*), beta
      real, intent(inout) :: y(*)
    end subroutine ssymv
    subroutine dsymv(uplo, n, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: uplo
      integer, intent(in) :: n, lda, incx, incy
      double precision, intent(in) :: alpha, a(lda, *), x(*), beta
      double precision, intent(inout) :: y(*)
    end subroutine dsymv
    subroutine chemv(uplo, n, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: uplo
      integer, intent(in) :: n, lda, incx, incy
      complex, intent(in) :: alpha, a(lda, *), x(*), beta
      complex, intent(inout) :: y(*)
    end subroutine chemv
    subroutine zhemv(uplo, n, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: uplo
      integer, intent(in) :: n, lda, incx, incy
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), x(*), beta
      complex(kind(0d0)), intent(inout) :: y(*)
    end subroutine zhemv
    subroutine ssbmv(uplo, n, k, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: uplo
      integer, intent(in) :: n, k, lda, incx, incy
      real, intent(in) :: alpha, a(lda, *), x(*), beta
      real, intent(inout) :: y(*)
    end subroutine ssbmv
    subroutine dsbmv(uplo, n, k, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: uplo
      integer, intent(in) :: n, k, lda, incx, incy
      double precision, intent(in) :: alpha, a(lda, *), x(*), beta
      double precision, intent(inout) :: y(*)
    end subroutine dsbmv
    subroutine chbmv(uplo, n, k, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: uplo
      integer, intent(in) :: n, k, lda, incx, incy
      complex, intent(in) :: alpha, a(lda, *), x(*), beta
      complex, intent(inout) :: y(*)
    end subroutine chbmv
    subroutine zhbmv(uplo, n, k, alpha, a, lda, x, incx, beta, y, incy)
      character, intent(in) :: uplo
      integer, intent(in) :: n, k, lda, incx, incy
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), x(*), beta
      complex(kind(0d0)), intent(inout) :: y(*)
    end subroutine zhbmv
    subroutine strmv(uplo, trans, diag, n, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, lda, incx
      real, intent(in) :: a(lda, *)
      real, intent(inout) :: x(*)
    end subroutine strmv
    subroutine dtrmv(uplo, trans, diag, n, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, lda, incx
      double precision, intent(in) :: a(lda, *)
      double precision, intent(inout) :: x(*)
    end subroutine dtrmv
    subroutine ctrmv(uplo, trans, diag, n, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, lda, incx
      complex, intent(in) :: a(lda, *)
      complex, intent(inout) :: x(*)
    end subroutine ctrmv
    subroutine ztrmv(uplo, trans, diag, n, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, lda, incx
      complex(kind(0d0)), intent(in) :: a(lda, *)
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine ztrmv
    subroutine strsv(uplo, trans, diag, n, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, lda, incx
      real, intent(in) :: a(lda, *)
      real, intent(inout) :: x(*)
    end subroutine strsv
    subroutine dtrsv(uplo, trans, diag, n, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, lda, incx
      double precision, intent(in) :: a(lda, *)
      double precision, intent(inout) :: x(*)
    end subroutine dtrsv
    subroutine ctrsv(uplo, trans, diag, n, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, lda, incx
      complex, intent(in) :: a(lda, *)
      complex, intent(inout) :: x(*)
    end subroutine ctrsv
    subroutine ztrsv(uplo, trans, diag, n, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, lda, incx
      complex(kind(0d0)), intent(in) :: a(lda, *)
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine ztrsv
    subroutine stbmv(uplo, trans, diag, n, k, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, k, lda, incx
      real, intent(in) :: a(lda, *)
      real, intent(inout) :: x(*)
    end subroutine stbmv
    subroutine dtbmv(uplo, trans, diag, n, k, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, k, lda, incx
      double precision, intent(in) :: a(lda, *)
      double precision, intent(inout) :: x(*)
    end subroutine dtbmv
    subroutine ctbmv(uplo, trans, diag, n, k, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, k, lda, incx
      complex, intent(in) :: a(lda, *)
      complex, intent(inout) :: x(*)
    end subroutine ctbmv
    subroutine ztbmv(uplo, trans, diag, n, k, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, k, lda, incx
      complex(kind(0d0)), intent(in) :: a(lda, *)
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine ztbmv
    subroutine stbsv(uplo, trans, diag, n, k, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, k, lda, incx
      real, intent(in) :: a(lda, *)
      real, intent(inout) :: x(*)
    end subroutine stbsv
    subroutine dtbsv(uplo, trans, diag, n, k, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, k, lda, incx
      double precision, intent(in) :: a(lda, *)
      double precision, intent(inout) :: x(*)
    end subroutine dtbsv
    subroutine ctbsv(uplo, trans, diag, n, k, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, k, lda, incx
      complex, intent(in) :: a(lda, *)
      complex, intent(inout) :: x(*)
    end subroutine ctbsv
    subroutine ztbsv(uplo, trans, diag, n, k, a, lda, x, incx)
      character, intent(in) :: uplo, trans, diag
      integer, intent(in) :: n, k, lda, incx
      complex(kind(0d0)), intent(in) :: a(lda, *)
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine ztbsv
    subroutine sger(m, n, alpha, x, incx, y, incy, a, lda)
      integer, intent(in) :: m, n, incx, incy, lda
      real, intent(in) :: alpha, x(*), y(*)
      real, intent(inout) :: a(lda, *)
    end subroutine sger
    subroutine dger(m, n, alpha, x, incx, y, incy, a, lda)
      integer, intent(in) :: m, n, incx, incy, lda
      double precision, intent(in) :: alpha, x(*), y(*)
      double precision, intent(inout) :: a(lda, *)
    end subroutine dger
    subroutine cgeru(m, n, alpha, x, incx, y, incy, a, lda)
      integer, intent(in) :: m, n, incx, incy, lda
      complex, intent(in) :: alpha, x(*), y(*)
      complex, intent(inout) :: a(lda, *)
    end subroutine cgeru
    subroutine zgeru(m, n, alpha, x, incx, y, incy, a, lda)
      integer, intent(in) :: m, n, incx, incy, lda
      complex(kind(0d0)), intent(in) :: alpha, x(*), y(*)
      complex(kind(0d0)), intent(inout) :: a(lda, *)
    end subroutine zgeru
    subroutine cgerc(m, n, alpha, x, incx, y, incy, a, lda)
      integer, intent(in) :: m, n, incx, incy, lda
      complex, intent(in) :: alpha, x(*), y(*)
      complex, intent(inout) :: a(lda, *)
    end subroutine cgerc
    subroutine zgerc(m, n, alpha, x, incx, y, incy, a, lda)
      integer, intent(in) :: m, n, incx, incy, lda
      complex(kind(0d0)), intent(in) :: alpha, x(*), y(*)
      complex(kind(0d0)), intent(inout) :: a(lda, *)
    end subroutine zgerc
    subroutine ssyr(uplo, n, alpha, x, incx, a, lda)
      character, intent(in) :: uplo
      integer, intent(in) :: n, incx, lda
      real, intent(in) :: alpha, x(*)
      real, intent(inout) :: a(lda, *)
    end subroutine ssyr
    subroutine dsyr(uplo, n, alpha, x, incx, a, lda)
      character, intent(in) :: uplo
      integer, intent(in) :: n, incx, lda
      double precision, intent(in) :: alpha, x(*)
      double precision, intent(inout) :: a(lda, *)
    end subroutine dsyr
    subroutine cher(uplo, n, alpha, x, incx, a, lda)
      character, intent(in) :: uplo
      integer, intent(in) :: n, incx, lda
      real, intent(in) :: alpha
      complex, intent(in) :: x(*)
      complex, intent(inout) :: a(lda, *)
    end subroutine cher
    subroutine zher(uplo, n, alpha, x, incx, a, lda)
      character, intent(in) :: uplo
      integer, intent(in) :: n, incx, lda
      double precision, intent(in) :: alpha
      complex(kind(0d0)), intent(in) :: x(*)
      complex(kind(0d0)), intent(inout) :: a(lda, *)
    end subroutine zher
    subroutine ssyr2(uplo, n, alpha, x, incx, y, incy, a, lda)
      character, intent(in) :: uplo
      integer, intent(in) :: n, incx, incy, lda
      real, intent(in) :: alpha, x(*), y(*)
      real, intent(inout) :: a(lda, *)
    end subroutine ssyr2
    subroutine dsyr2(uplo, n, alpha, x, incx, y, incy, a, lda)
      character, intent(in) :: uplo
      integer, intent(in) :: n, incx, incy, lda
      double precision, intent(in) :: alpha, x(*), y(*)
      double precision, intent(inout) :: a(lda, *)
    end subroutine dsyr2
    subroutine cher2(uplo, n, alpha, x, incx, y, incy, a, lda)
      character, intent(in) :: uplo
      integer, intent(in) :: n, incx, incy, lda
      complex, intent(in) :: alpha, x(*), y(*)
      complex, intent(inout) :: a(lda, *)
    end subroutine cher2
    subroutine zher2(uplo, n, alpha, x, incx, y, incy, a, lda)
      character, intent(in) :: uplo
      integer, intent(in) :: n, incx, incy, lda
      complex(kind(0d0)), intent(in) :: alpha, x(*), y(*)
      complex(kind(0d0)), intent(inout) :: a(lda, *)
    end subroutine zher2
    subroutine sgemm(transa, transb, m, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: transa, transb
      integer, intent(in) :: m, n, k, lda, ldb, ldc
      real, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      real, intent(inout) :: c(ldc, *)
    end subroutine sgemm
    subroutine dgemm(transa, transb, m, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: transa, transb
      integer, intent(in) :: m, n, k, lda, ldb, ldc
      double precision, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      double precision, intent(inout) :: c(ldc, *)
    end subroutine dgemm
    subroutine cgemm(transa, transb, m, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: transa, transb
      integer, intent(in) :: m, n, k, lda, ldb, ldc
      complex, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      complex, intent(inout) :: c(ldc, *)
    end subroutine cgemm
    subroutine zgemm(transa, transb, m, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: transa, transb
      integer, intent(in) :: m, n, k, lda, ldb, ldc
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      complex(kind(0d0)), intent(inout) :: c(ldc, *)
    end subroutine zgemm
    subroutine ssymm(side, uplo, m, n, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: side, uplo
      integer, intent(in) :: m, n, lda, ldb, ldc
      real, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      real, intent(inout) :: c(ldc, *)
    end subroutine ssymm
    subroutine dsymm(side, uplo, m, n, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: side, uplo
      integer, intent(in) :: m, n, lda, ldb, ldc
      double precision, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      double precision, intent(inout) :: c(ldc, *)
    end subroutine dsymm
    subroutine csymm(side, uplo, m, n, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: side, uplo
      integer, intent(in) :: m, n, lda, ldb, ldc
      complex, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      complex, intent(inout) :: c(ldc, *)
    end subroutine csymm
    subroutine zsymm(side, uplo, m, n, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: side, uplo
      integer, intent(in) :: m, n, lda, ldb, ldc
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      complex(kind(0d0)), intent(inout) :: c(ldc, *)
    end subroutine zsymm
    subroutine chemm(side, uplo, m, n, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: side, uplo
      integer, intent(in) :: m, n, lda, ldb, ldc
      complex, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      complex, intent(inout) :: c(ldc, *)
    end subroutine chemm
    subroutine zhemm(side, uplo, m, n, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: side, uplo
      integer, intent(in) :: m, n, lda, ldb, ldc
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      complex(kind(0d0)), intent(inout) :: c(ldc, *)
    end subroutine zhemm
    subroutine ssyrk(uplo, trans, n, k, alpha, a, lda, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldc
      real, intent(in) :: alpha, a(lda, *), beta
      real, intent(inout) :: c(ldc, *)
    end subroutine ssyrk
    subroutine dsyrk(uplo, trans, n, k, alpha, a, lda, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldc
      double precision, intent(in) :: alpha, a(lda, *), beta
      double precision, intent(inout) :: c(ldc, *)
    end subroutine dsyrk
    subroutine csyrk(uplo, trans, n, k, alpha, a, lda, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldc
      complex, intent(in) :: alpha, a(lda, *), beta
      complex, intent(inout) :: c(ldc, *)
    end subroutine csyrk
    subroutine zsyrk(uplo, trans, n, k, alpha, a, lda, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldc
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), beta
      complex(kind(0d0)), intent(inout) :: c(ldc, *)
    end subroutine zsyrk
    subroutine cherk(uplo, trans, n, k, alpha, a, lda, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldc
      real, intent(in) :: alpha, beta
      complex, intent(in) :: a(lda, *)
      complex, intent(inout) :: c(ldc, *)
    end subroutine cherk
    subroutine zherk(uplo, trans, n, k, alpha, a, lda, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldc
      double precision, intent(in) :: alpha, beta
      complex(kind(0d0)), intent(in) :: a(lda, *)
      complex(kind(0d0)), intent(inout) :: c(ldc, *)
    end subroutine zherk
    subroutine ssyr2k(uplo, trans, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldb, ldc
      real, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      real, intent(inout) :: c(ldc, *)
    end subroutine ssyr2k
    subroutine dsyr2k(uplo, trans, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldb, ldc
      double precision, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      double precision, intent(inout) :: c(ldc, *)
    end subroutine dsyr2k
    subroutine csyr2k(uplo, trans, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldb, ldc
      complex, intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      complex, intent(inout) :: c(ldc, *)
    end subroutine csyr2k
    subroutine zsyr2k(uplo, trans, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldb, ldc
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), b(ldb, *), beta
      complex(kind(0d0)), intent(inout) :: c(ldc, *)
    end subroutine zsyr2k
    subroutine cher2k(uplo, trans, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldb, ldc
      real, intent(in) :: beta
      complex, intent(in) :: alpha, a(lda, *), b(ldb, *)
      complex, intent(inout) :: c(ldc, *)
    end subroutine cher2k
    subroutine zher2k(uplo, trans, n, k, alpha, a, lda, b, ldb, beta, c, ldc)
      character, intent(in) :: uplo, trans
      integer, intent(in) :: n, k, lda, ldb, ldc
      double precision, intent(in) :: beta
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *), b(ldb, *)
      complex(kind(0d0)), intent(inout) :: c(ldc, *)
    end subroutine zher2k
    subroutine strmm(side, uplo, transa, diag, m, n, alpha, a, lda, b, ldb)
      character, intent(in) :: side, uplo, transa, diag
      integer, intent(in) :: m, n, lda, ldb
      real, intent(in) :: alpha, a(lda, *)
      real, intent(inout) :: b(ldb, *)
    end subroutine strmm
    subroutine dtrmm(side, uplo, transa, diag, m, n, alpha, a, lda, b, ldb)
      character, intent(in) :: side, uplo, transa, diag
      integer, intent(in) :: m, n, lda, ldb
      double precision, intent(in) :: alpha, a(lda, *)
      double precision, intent(inout) :: b(ldb, *)
    end subroutine dtrmm
    subroutine ctrmm(side, uplo, transa, diag, m, n, alpha, a, lda, b, ldb)
      character, intent(in) :: side, uplo, transa, diag
      integer, intent(in) :: m, n, lda, ldb
      complex, intent(in) :: alpha, a(lda, *)
      complex, intent(inout) :: b(ldb, *)
    end subroutine ctrmm
    subroutine ztrmm(side, uplo, transa, diag, m, n, alpha, a, lda, b, ldb)
      character, intent(in) :: side, uplo, transa, diag
      integer, intent(in) :: m, n, lda, ldb
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *)
      complex(kind(0d0)), intent(inout) :: b(ldb, *)
    end subroutine ztrmm
    subroutine strsm(side, uplo, transa, diag, m, n, alpha, a, lda, b, ldb)
      character, intent(in) :: side, uplo, transa, diag
      integer, intent(in) :: m, n, lda, ldb
      real, intent(in) :: alpha, a(lda, *)
      real, intent(inout) :: b(ldb, *)
    end subroutine strsm
    subroutine dtrsm(side, uplo, transa, diag, m, n, alpha, a, lda, b, ldb)
      character, intent(in) :: side, uplo, transa, diag
      integer, intent(in) :: m, n, lda, ldb
      double precision, intent(in) :: alpha, a(lda, *)
      double precision, intent(inout) :: b(ldb, *)
    end subroutine dtrsm
    subroutine ctrsm(side, uplo, transa, diag, m, n, alpha, a, lda, b, ldb)
      character, intent(in) :: side, uplo, transa, diag
      integer, intent(in) :: m, n, lda, ldb
      complex, intent(in) :: alpha, a(lda, *)
      complex, intent(inout) :: b(ldb, *)
    end subroutine ctrsm
    subroutine ztrsm(side, uplo, transa, diag, m, n, alpha, a, lda, b, ldb)
      character, intent(in) :: side, uplo, transa, diag
      integer, intent(in) :: m, n, lda, ldb
      complex(kind(0d0)), intent(in) :: alpha, a(lda, *)
      complex(kind(0d0)), intent(inout) :: b(ldb, *)
    end subroutine ztrsm
  end interface
end module orvel_matrices
