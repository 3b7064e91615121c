! fortran/orvel_quad.f90 - interfaces of adaptive quadrature
module orvel_quad
  implicit none
  public
  private :: real_function, double_function

  abstract interface
    real function real_function(x)
      real, intent(in) :: x
    end function real_function
    double precision function double_function(x)
      double precision, intent(in) :: x
    end function double_function
  end interface

  interface
    subroutine qdags(f, a, b, errabs, errrel, result, esterr)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b, errabs, errrel
      real, intent(inout) :: result, esterr
    end subroutine qdags
    subroutine dqdags(f, a, b, errabs, errrel, result, esterr)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b, errabs, errrel
      double precision, intent(inout) :: result, esterr
    end subroutine dqdags
    subroutine q2ags(f, a, b, errabs, errrel, result, esterr, &
        maxsub, neval, nsub, sublo, subhi, subres, suberr, subord)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: maxsub
      real, intent(inout) :: result, esterr
      integer, intent(inout) :: neval, nsub
      real, intent(inout) :: sublo(*), subhi(*), subres(*), suberr(*)
      integer, intent(inout) :: subord(*)
    end subroutine q2ags
    subroutine dq2ags(f, a, b, errabs, errrel, result, esterr, &
        maxsub, neval, nsub, sublo, subhi, subres, suberr, subord)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: maxsub
      double precision, intent(inout) :: result, esterr
      integer, intent(inout) :: neval, nsub
      double precision, intent(inout) :: sublo(*), subhi(*), subres(*), suberr(*)
      integer, intent(inout) :: subord(*)
    end subroutine dq2ags
    subroutine q3ags(f, a, b, errabs, errrel, maxsub, result, esterr, &
        neval, ier, sublo, subhi, subres, suberr, subord, nsub)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: maxsub
      real, intent(inout) :: result, esterr
      integer, intent(inout) :: neval, ier, nsub
      real, intent(inout) :: sublo(*), subhi(*), subres(*), suberr(*)
      integer, intent(inout) :: subord(*)
    end subroutine q3ags
    subroutine dq3ags(f, a, b, errabs, errrel, maxsub, result, esterr, &
        neval, ier, sublo, subhi, subres, suberr, subord, nsub)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: maxsub
      double precision, intent(inout) :: result, esterr
      integer, intent(inout) :: neval, ier, nsub
      double precision, intent(inout) :: sublo(*), subhi(*), subres(*), suberr(*)
      integer, intent(inout) :: subord(*)
    end subroutine dq3ags
    subroutine qdag(f, a, b, errabs, errrel, irule, result, esterr)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: irule
      real, intent(inout) :: result, esterr
    end subroutine qdag
    subroutine dqdag(f, a, b, errabs, errrel, irule, result, esterr)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: irule
      double precision, intent(inout) :: result, esterr
    end subroutine dqdag
    subroutine q2ag(f, a, b, errabs, errrel, irule, result, esterr, &
        maxsub, neval, nsub, sublo, subhi, subres, suberr, subord)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: irule, maxsub
      real, intent(inout) :: result, esterr
      integer, intent(inout) :: neval, nsub
      real, intent(inout) :: sublo(*), subhi(*), subres(*), suberr(*)
      integer, intent(inout) :: subord(*)
    end subroutine q2ag
    subroutine dq2ag(f, a, b, errabs, errrel, irule, result, esterr, &
        maxsub, neval, nsub, sublo, subhi, subres, suberr, subord)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: irule, maxsub
      double precision, intent(inout) :: result, esterr
      integer, intent(inout) :: neval, nsub
      double precision, intent(inout) :: sublo(*), subhi(*), subres(*), suberr(*)
      integer, intent(inout) :: subord(*)
    end subroutine dq2ag
    subroutine q3ag(f, a, b, errabs, errrel, irule, maxsub, result, &
        esterr, neval, ier, sublo, subhi, subres, suberr, subord, nsub)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: irule, maxsub
      real, intent(inout) :: result, esterr
      integer, intent(inout) :: neval, ier, nsub
      real, intent(inout) :: sublo(*), subhi(*), subres(*), suberr(*)
      integer, intent(inout) :: subord(*)
    end subroutine q3ag
    subroutine dq3ag(f, a, b, errabs, errrel, irule, maxsub, result, &
        esterr, neval, ier, sublo, subhi, subres, suberr, subord, nsub)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b, errabs, errrel
      integer, intent(in) :: irule, maxsub
      double precision, intent(inout) :: result, esterr
      integer, intent(inout) :: neval, ier, nsub
      double precision, intent(inout) :: sublo(*), subhi(*), subres(*), suberr(*)
      integer, intent(inout) :: subord(*)
    end subroutine dq3ag
    subroutine q4ag(f, a, b, result, esterr, absint, devint)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b
      real, intent(inout) :: result, esterr, absint, devint
    end subroutine q4ag
    subroutine dq4ag(f, a, b, result, esterr, absint, devint)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b
      double precision, intent(inout) :: result, esterr, absint, devint
    end subroutine dq4ag
    subroutine q5ag(f, a, b, result, esterr, absint, devint)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b
      real, intent(inout) :: result, esterr, absint, devint
    end subroutine q5ag
    subroutine dq5ag(f, a, b, result, esterr, absint, devint)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b
      double precision, intent(inout) :: result, esterr, absint, devint
    end subroutine dq5ag
    subroutine q6ag(f, a, b, result, esterr, absint, devint)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b
      real, intent(inout) :: result, esterr, absint, devint
    end subroutine q6ag
    subroutine dq6ag(f, a, b, result, esterr, absint, devint)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b
      double precision, intent(inout) :: result, esterr, absint, devint
    end subroutine dq6ag
    subroutine q7ag(f, a, b, result, esterr, absint, devint)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b
      real, intent(inout) :: result, esterr, absint, devint
    end subroutine q7ag
    subroutine dq7ag(f, a, b, result, esterr, absint, devint)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b
      double precision, intent(inout) :: result, esterr, absint, devint
    end subroutine dq7ag
    subroutine q8ag(f, a, b, result, esterr, absint, devint)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b
      real, intent(inout) :: result, esterr, absint, devint
    end subroutine q8ag
    subroutine dq8ag(f, a, b, result, esterr, absint, devint)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b
      double precision, intent(inout) :: result, esterr, absint, devint
    end subroutine dq8ag
    subroutine q9ag(f, a, b, result, esterr, absint, devint)
      import :: real_function
      procedure(real_function) :: f
      real, intent(in) :: a, b
      real, intent(inout) :: result, esterr, absint, devint
    end subroutine q9ag
    subroutine dq9ag(f, a, b, result, esterr, absint, devint)
      import :: double_function
      procedure(double_function) :: f
      double precision, intent(in) :: a, b
      double precision, intent(inout) :: result, esterr, absint, devint
    end subroutine dq9ag
    subroutine q10g(maxsub, last, maxerr, ermax, suberr, subord, nrmax)
      integer, intent(in) :: maxsub, last
      integer, intent(inout) :: maxerr, subord(*), nrmax
      real, intent(inout) :: ermax
      real, intent(in) :: suberr(*)
    end subroutine q10g
    subroutine dq10g(maxsub, last, maxerr, ermax, suberr, subord, nrmax)
      integer, intent(in) :: maxsub, last
      integer, intent(inout) :: maxerr, subord(*), nrmax
      double precision, intent(inout) :: ermax
      double precision, intent(in) :: suberr(*)
    end subroutine dq10g
    subroutine q4awo(n, epstab, result, esterr, res3la, nres)
      integer, intent(inout) :: n, nres
      real, intent(inout) :: epstab(*), result, esterr, res3la(*)
    end subroutine q4awo
    subroutine dq4awo(n, epstab, result, esterr, res3la, nres)
      integer, intent(inout) :: n, nres
      double precision, intent(inout) :: epstab(*), result, esterr, res3la(*)
    end subroutine dq4awo
    subroutine q4ng(epmach, uflow, oflow)
      real, intent(inout) :: epmach, uflow, oflow
    end subroutine q4ng
    subroutine dq4ng(epmach, uflow, oflow)
      double precision, intent(inout) :: epmach, uflow, oflow
    end subroutine dq4ng
  end interface
end module orvel_quad
