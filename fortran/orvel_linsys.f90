! fortran/orvel_linsys.f90 - interfaces of the dense linear systems
module orvel_linsys
  implicit none
  public

  interface
    subroutine lsarg(n, a, lda, b, ipath, x)
      integer, intent(in) :: n, lda, ipath
      real, intent(in) :: a(lda,*), b(*)
      real, intent(inout) :: x(*)
    end subroutine lsarg
    subroutine dlsarg(n, a, lda, b, ipath, x)
      integer, intent(in) :: n, lda, ipath
      double precision, intent(in) :: a(lda,*), b(*)
      double precision, intent(inout) :: x(*)
    end subroutine dlsarg
    subroutine lsacg(n, a, lda, b, ipath, x)
      integer, intent(in) :: n, lda, ipath
      complex, intent(in) :: a(lda,*), b(*)
      complex, intent(inout) :: x(*)
    end subroutine lsacg
    subroutine dlsacg(n, a, lda, b, ipath, x)
      integer, intent(in) :: n, lda, ipath
      complex(kind(0d0)), intent(in) :: a(lda,*), b(*)
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine dlsacg
    subroutine l2arg(n, a, lda, b, ipath, x, fact, ipvt, wk)
      integer, intent(in) :: n, lda, ipath
      real, intent(in) :: a(lda,*), b(*)
      integer, intent(inout) :: ipvt(*)
      real, intent(inout) :: x(*), fact(*), wk(*)
    end subroutine l2arg
    subroutine dl2arg(n, a, lda, b, ipath, x, fact, ipvt, wk)
      integer, intent(in) :: n, lda, ipath
      double precision, intent(in) :: a(lda,*), b(*)
      double precision, intent(inout) :: x(*), fact(*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dl2arg
    subroutine l2acg(n, a, lda, b, ipath, x, fact, ipvt, wk)
      integer, intent(in) :: n, lda, ipath
      complex, intent(in) :: a(lda,*), b(*)
      complex, intent(inout) :: x(*), fact(*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine l2acg
    subroutine dl2acg(n, a, lda, b, ipath, x, fact, ipvt, wk)
      integer, intent(in) :: n, lda, ipath
      complex(kind(0d0)), intent(in) :: a(lda,*), b(*)
      complex(kind(0d0)), intent(inout) :: x(*), fact(*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dl2acg
    subroutine lslrg(n, a, lda, b, ipath, x)
      integer, intent(in) :: n, lda, ipath
      real, intent(in) :: a(lda,*), b(*)
      real, intent(inout) :: x(*)
    end subroutine lslrg
    subroutine dlslrg(n, a, lda, b, ipath, x)
      integer, intent(in) :: n, lda, ipath
      double precision, intent(in) :: a(lda,*), b(*)
      double precision, intent(inout) :: x(*)
    end subroutine dlslrg
    subroutine lslcg(n, a, lda, b, ipath, x)
      integer, intent(in) :: n, lda, ipath
      complex, intent(in) :: a(lda,*), b(*)
      complex, intent(inout) :: x(*)
    end subroutine lslcg
    subroutine dlslcg(n, a, lda, b, ipath, x)
      integer, intent(in) :: n, lda, ipath
      complex(kind(0d0)), intent(in) :: a(lda,*), b(*)
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine dlslcg
    subroutine l2lrg(n, a, lda, b, ipath, x, fact, ipvt, wk)
      integer, intent(in) :: n, lda, ipath
      real, intent(in) :: a(lda,*), b(*)
      integer, intent(inout) :: ipvt(*)
      real, intent(inout) :: x(*), fact(*), wk(*)
    end subroutine l2lrg
    subroutine dl2lrg(n, a, lda, b, ipath, x, fact, ipvt, wk)
      integer, intent(in) :: n, lda, ipath
      double precision, intent(in) :: a(lda,*), b(*)
      double precision, intent(inout) :: x(*), fact(*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dl2lrg
    subroutine l2lcg(n, a, lda, b, ipath, x, fact, ipvt, wk)
      integer, intent(in) :: n, lda, ipath
      complex, intent(in) :: a(lda,*), b(*)
      complex, intent(inout) :: x(*), fact(*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine l2lcg
    subroutine dl2lcg(n, a, lda, b, ipath, x, fact, ipvt, wk)
      integer, intent(in) :: n, lda, ipath
      complex(kind(0d0)), intent(in) :: a(lda,*), b(*)
      complex(kind(0d0)), intent(inout) :: x(*), fact(*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dl2lcg
    subroutine lfcrg(n, a, lda, fact, ldfac, ipvt, rcond)
      integer, intent(in) :: n, lda, ldfac
      real, intent(in) :: a(lda,*)
      integer, intent(inout) :: ipvt(*)
      real, intent(inout) :: fact(ldfac,*), rcond
    end subroutine lfcrg
    subroutine dlfcrg(n, a, lda, fact, ldfac, ipvt, rcond)
      integer, intent(in) :: n, lda, ldfac
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: fact(ldfac,*), rcond
      integer, intent(inout) :: ipvt(*)
    end subroutine dlfcrg
    subroutine lfccg(n, a, lda, fact, ldfac, ipvt, rcond)
      integer, intent(in) :: n, lda, ldfac
      complex, intent(in) :: a(lda,*)
      complex, intent(inout) :: fact(ldfac,*)
      integer, intent(inout) :: ipvt(*)
      real, intent(inout) :: rcond
    end subroutine lfccg
    subroutine dlfccg(n, a, lda, fact, ldfac, ipvt, rcond)
      integer, intent(in) :: n, lda, ldfac
      complex(kind(0d0)), intent(in) :: a(lda,*)
      complex(kind(0d0)), intent(inout) :: fact(ldfac,*)
      double precision, intent(inout) :: rcond
      integer, intent(inout) :: ipvt(*)
    end subroutine dlfccg
    subroutine l2crg(n, a, lda, fact, ldfac, ipvt, rcond, wk)
      integer, intent(in) :: n, lda, ldfac
      real, intent(in) :: a(lda,*)
      integer, intent(inout) :: ipvt(*)
      real, intent(inout) :: fact(ldfac,*), rcond, wk(*)
    end subroutine l2crg
    subroutine dl2crg(n, a, lda, fact, ldfac, ipvt, rcond, wk)
      integer, intent(in) :: n, lda, ldfac
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: fact(ldfac,*), rcond, wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dl2crg
    subroutine l2ccg(n, a, lda, fact, ldfac, ipvt, rcond, wk)
      integer, intent(in) :: n, lda, ldfac
      complex, intent(in) :: a(lda,*)
      complex, intent(inout) :: fact(ldfac,*), wk(*)
      integer, intent(inout) :: ipvt(*)
      real, intent(inout) :: rcond
    end subroutine l2ccg
    subroutine dl2ccg(n, a, lda, fact, ldfac, ipvt, rcond, wk)
      integer, intent(in) :: n, lda, ldfac
      complex(kind(0d0)), intent(in) :: a(lda,*)
      complex(kind(0d0)), intent(inout) :: fact(ldfac,*), wk(*)
      double precision, intent(inout) :: rcond
      integer, intent(inout) :: ipvt(*)
    end subroutine dl2ccg
    subroutine lftrg(n, a, lda, fact, ldfac, ipvt)
      integer, intent(in) :: n, lda, ldfac
      real, intent(in) :: a(lda,*)
      integer, intent(inout) :: ipvt(*)
      real, intent(inout) :: fact(ldfac,*)
    end subroutine lftrg
    subroutine dlftrg(n, a, lda, fact, ldfac, ipvt)
      integer, intent(in) :: n, lda, ldfac
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: fact(ldfac,*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dlftrg
    subroutine lftcg(n, a, lda, fact, ldfac, ipvt)
      integer, intent(in) :: n, lda, ldfac
      complex, intent(in) :: a(lda,*)
      complex, intent(inout) :: fact(ldfac,*)
      integer, intent(inout) :: ipvt(*)
    end subroutine lftcg
    subroutine dlftcg(n, a, lda, fact, ldfac, ipvt)
      integer, intent(in) :: n, lda, ldfac
      complex(kind(0d0)), intent(in) :: a(lda,*)
      complex(kind(0d0)), intent(inout) :: fact(ldfac,*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dlftcg
    subroutine l2trg(n, a, lda, fact, ldfac, ipvt, wk)
      integer, intent(in) :: n, lda, ldfac
      real, intent(in) :: a(lda,*)
      integer, intent(inout) :: ipvt(*)
      real, intent(inout) :: fact(ldfac,*), wk(*)
    end subroutine l2trg
    subroutine dl2trg(n, a, lda, fact, ldfac, ipvt, wk)
      integer, intent(in) :: n, lda, ldfac
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: fact(ldfac,*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dl2trg
    subroutine l2tcg(n, a, lda, fact, ldfac, ipvt, wk)
      integer, intent(in) :: n, lda, ldfac
      complex, intent(in) :: a(lda,*)
      complex, intent(inout) :: fact(ldfac,*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine l2tcg
    subroutine dl2tcg(n, a, lda, fact, ldfac, ipvt, wk)
      integer, intent(in) :: n, lda, ldfac
      complex(kind(0d0)), intent(in) :: a(lda,*)
      complex(kind(0d0)), intent(inout) :: fact(ldfac,*), wk(*)
      integer, intent(inout) :: ipvt(*)
    end subroutine dl2tcg
    subroutine lfsrg(n, fact, ldfac, ipvt, b, ipath, x)
      integer, intent(in) :: n, ldfac, ipvt(*), ipath
      real, intent(in) :: fact(ldfac,*), b(*)
      real, intent(inout) :: x(*)
    end subroutine lfsrg
    subroutine dlfsrg(n, fact, ldfac, ipvt, b, ipath, x)
      integer, intent(in) :: n, ldfac, ipvt(*), ipath
      double precision, intent(in) :: fact(ldfac,*), b(*)
      double precision, intent(inout) :: x(*)
    end subroutine dlfsrg
    subroutine lfscg(n, fact, ldfac, ipvt, b, ipath, x)
      integer, intent(in) :: n, ldfac, ipvt(*), ipath
      complex, intent(in) :: fact(ldfac,*), b(*)
      complex, intent(inout) :: x(*)
    end subroutine lfscg
    subroutine dlfscg(n, fact, ldfac, ipvt, b, ipath, x)
      integer, intent(in) :: n, ldfac, ipvt(*), ipath
      complex(kind(0d0)), intent(in) :: fact(ldfac,*), b(*)
      complex(kind(0d0)), intent(inout) :: x(*)
    end subroutine dlfscg
    subroutine lfirg(n, a, lda, fact, ldfac, ipvt, b, ipath, x, res)
      integer, intent(in) :: n, lda, ldfac, ipvt(*), ipath
      real, intent(in) :: a(lda,*), fact(ldfac,*), b(*)
      real, intent(inout) :: x(*), res(*)
    end subroutine lfirg
    subroutine dlfirg(n, a, lda, fact, ldfac, ipvt, b, ipath, x, res)
      integer, intent(in) :: n, lda, ldfac, ipvt(*), ipath
      double precision, intent(in) :: a(lda,*), fact(ldfac,*), b(*)
      double precision, intent(inout) :: x(*), res(*)
    end subroutine dlfirg
    subroutine lficg(n, a, lda, fact, ldfac, ipvt, b, ipath, x, res)
      integer, intent(in) :: n, lda, ldfac, ipvt(*), ipath
      complex, intent(in) :: a(lda,*), fact(ldfac,*), b(*)
      complex, intent(inout) :: x(*), res(*)
    end subroutine lficg
    subroutine dlficg(n, a, lda, fact, ldfac, ipvt, b, ipath, x, res)
      integer, intent(in) :: n, lda, ldfac, ipvt(*), ipath
      complex(kind(0d0)), intent(in) :: a(lda,*), fact(ldfac,*), b(*)
      complex(kind(0d0)), intent(inout) :: x(*), res(*)
    end subroutine dlficg
    subroutine lfdrg(n, fact, ldfac, ipvt, det1, det2)
      integer, intent(in) :: n, ldfac, ipvt(*)
      real, intent(in) :: fact(ldfac,*)
      real, intent(inout) :: det1, det2
    end subroutine lfdrg
    subroutine dlfdrg(n, fact, ldfac, ipvt, det1, det2)
      integer, intent(in) :: n, ldfac, ipvt(*)
      double precision, intent(in) :: fact(ldfac,*)
      double precision, intent(inout) :: det1, det2
    end subroutine dlfdrg
    subroutine lfdcg(n, fact, ldfac, ipvt, det1, det2)
      integer, intent(in) :: n, ldfac, ipvt(*)
      complex, intent(in) :: fact(ldfac,*)
      complex, intent(inout) :: det1
      real, intent(inout) :: det2
    end subroutine lfdcg
    subroutine dlfdcg(n, fact, ldfac, ipvt, det1, det2)
      integer, intent(in) :: n, ldfac, ipvt(*)
      complex(kind(0d0)), intent(in) :: fact(ldfac,*)
      complex(kind(0d0)), intent(inout) :: det1
      double precision, intent(inout) :: det2
    end subroutine dlfdcg
    subroutine linrg(n, a, lda, ainv, ldainv)
      integer, intent(in) :: n, lda, ldainv
      real, intent(in) :: a(lda,*)
      real, intent(inout) :: ainv(ldainv,*)
    end subroutine linrg
    subroutine dlinrg(n, a, lda, ainv, ldainv)
      integer, intent(in) :: n, lda, ldainv
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: ainv(ldainv,*)
    end subroutine dlinrg
    subroutine lincg(n, a, lda, ainv, ldainv)
      integer, intent(in) :: n, lda, ldainv
      complex, intent(in) :: a(lda,*)
      complex, intent(inout) :: ainv(ldainv,*)
    end subroutine lincg
    subroutine dlincg(n, a, lda, ainv, ldainv)
      integer, intent(in) :: n, lda, ldainv
      complex(kind(0d0)), intent(in) :: a(lda,*)
      complex(kind(0d0)), intent(inout) :: ainv(ldainv,*)
    end subroutine dlincg
    subroutine l2nrg(n, a, lda, ainv, ldainv, wk, iwk)
      integer, intent(in) :: n, lda, ldainv
      real, intent(in) :: a(lda,*)
      integer, intent(inout) :: iwk(*)
      real, intent(inout) :: ainv(ldainv,*), wk(*)
    end subroutine l2nrg
    subroutine dl2nrg(n, a, lda, ainv, ldainv, wk, iwk)
      integer, intent(in) :: n, lda, ldainv
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: ainv(ldainv,*), wk(*)
      integer, intent(inout) :: iwk(*)
    end subroutine dl2nrg
    subroutine l2ncg(n, a, lda, ainv, ldainv, wk, iwk)
      integer, intent(in) :: n, lda, ldainv
      complex, intent(in) :: a(lda,*)
      complex, intent(inout) :: ainv(ldainv,*), wk(*)
      integer, intent(inout) :: iwk(*)
    end subroutine l2ncg
    subroutine dl2ncg(n, a, lda, ainv, ldainv, wk, iwk)
      integer, intent(in) :: n, lda, ldainv
      complex(kind(0d0)), intent(in) :: a(lda,*)
      complex(kind(0d0)), intent(inout) :: ainv(ldainv,*), wk(*)
      integer, intent(inout) :: iwk(*)
    end subroutine dl2ncg
    subroutine linrt(n, a, lda, ipath, ainv, ldainv)
      integer, intent(in) :: n, lda, ipath, ldainv
      real, intent(in) :: a(lda,*)
      real, intent(inout) :: ainv(ldainv,*)
    end subroutine linrt
    subroutine dlinrt(n, a, lda, ipath, ainv, ldainv)
      integer, intent(in) :: n, lda, ipath, ldainv
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: ainv(ldainv,*)
    end subroutine dlinrt
    subroutine linct(n, a, lda, ipath, ainv, ldainv)
      integer, intent(in) :: n, lda, ipath, ldainv
      complex, intent(in) :: a(lda,*)
      complex, intent(inout) :: ainv(ldainv,*)
    end subroutine linct
    subroutine dlinct(n, a, lda, ipath, ainv, ldainv)
      integer, intent(in) :: n, lda, ipath, ldainv
      complex(kind(0d0)), intent(in) :: a(lda,*)
      complex(kind(0d0)), intent(inout) :: ainv(ldainv,*)
    end subroutine dlinct
    subroutine crgrg(n, a, lda, b, ldb)
      integer, intent(in) :: n, lda, ldb
      real, intent(in) :: a(lda,*)
      real, intent(inout) :: b(ldb,*)
    end subroutine crgrg
    subroutine dcrgrg(n, a, lda, b, ldb)
      integer, intent(in) :: n, lda, ldb
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: b(ldb,*)
    end subroutine dcrgrg
    subroutine ccgcg(n, a, lda, b, ldb)
      integer, intent(in) :: n, lda, ldb
      complex, intent(in) :: a(lda,*)
      complex, intent(inout) :: b(ldb,*)
    end subroutine ccgcg
    subroutine dccgcg(n, a, lda, b, ldb)
      integer, intent(in) :: n, lda, ldb
      complex(kind(0d0)), intent(in) :: a(lda,*)
      complex(kind(0d0)), intent(inout) :: b(ldb,*)
    end subroutine dccgcg
    subroutine nr1rr(nra, nca, a, lda, anorm)
      integer, intent(in) :: nra, nca, lda
      real, intent(in) :: a(lda,*)
      real, intent(inout) :: anorm
    end subroutine nr1rr
    subroutine dnr1rr(nra, nca, a, lda, anorm)
      integer, intent(in) :: nra, nca, lda
      double precision, intent(in) :: a(lda,*)
      double precision, intent(inout) :: anorm
    end subroutine dnr1rr
    subroutine nr1cr(nra, nca, a, lda, anorm)
      integer, intent(in) :: nra, nca, lda
      complex, intent(in) :: a(lda,*)
      real, intent(inout) :: anorm
    end subroutine nr1cr
    subroutine dnr1cr(nra, nca, a, lda, anorm)
      integer, intent(in) :: nra, nca, lda
      complex(kind(0d0)), intent(in) :: a(lda,*)
      double precision, intent(inout) :: anorm
    end subroutine dnr1cr
    subroutine l4trg(n, x, s, l)
      integer, intent(in) :: n
      real, intent(in) :: x(*), s(*)
      integer, intent(inout) :: l
    end subroutine l4trg
    subroutine dl4trg(n, x, s, l)
      integer, intent(in) :: n
      double precision, intent(in) :: x(*), s(*)
      integer, intent(inout) :: l
    end subroutine dl4trg
    subroutine l4tcg(n, x, s, l)
      integer, intent(in) :: n
      complex, intent(in) :: x(*)
      real, intent(in) :: s(*)
      integer, intent(inout) :: l
    end subroutine l4tcg
    subroutine dl4tcg(n, x, s, l)
      integer, intent(in) :: n
      complex(kind(0d0)), intent(in) :: x(*)
      double precision, intent(in) :: s(*)
      integer, intent(inout) :: l
    end subroutine dl4tcg
    subroutine iumag(chapter, iact, iopt, nvals, ivals)
      integer, intent(in) :: iact, iopt, nvals
      character(*), intent(in) :: chapter
      integer, intent(inout) :: ivals(*)
    end subroutine iumag
  end interface

end module orvel_linsys
