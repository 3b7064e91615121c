! fortran/orvel_interp.f90 - interfaces of the cubic splines
module orvel_interp
  implicit none
  public

  interface
    subroutine csint(ndata, xdata, fdata, brkpt, spcoef)
      integer, intent(in) :: ndata
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(4, *)
    end subroutine csint
    subroutine c2int(ndata, xdata, fdata, brkpt, spcoef, iwk)
      integer, intent(in) :: ndata
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(4, *)
      integer, intent(inout) :: iwk(*)
    end subroutine c2int
    subroutine csakm(ndata, xdata, fdata, brkpt, spcoef)
      integer, intent(in) :: ndata
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(4, *)
    end subroutine csakm
    subroutine c2akm(ndata, xdata, fdata, brkpt, spcoef, iwk)
      integer, intent(in) :: ndata
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(4, *)
      integer, intent(inout) :: iwk(*)
    end subroutine c2akm
    subroutine csdec(ndata, xdata, fdata, ileft, vleft, iright, vright, brkpt, spcoef)
      integer, intent(in) :: ndata
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(4, *)
      integer, intent(in) :: ileft, iright
      real, intent(in) :: vleft, vright
    end subroutine csdec
    subroutine c2dec(ndata, xdata, fdata, ileft, vleft, iright, vright, brkpt, spcoef, iwk)
      integer, intent(in) :: ndata
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(4, *)
      integer, intent(in) :: ileft, iright
      real, intent(in) :: vleft, vright
      integer, intent(inout) :: iwk(*)
    end subroutine c2dec
    subroutine csper(ndata, xdata, fdata, brkpt, spcoef)
      integer, intent(in) :: ndata
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(4, *)
    end subroutine csper
    subroutine c2per(ndata, xdata, fdata, brkpt, spcoef, wk, iwk)
      integer, intent(in) :: ndata
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(4, *)
      real, intent(inout) :: wk(*)
      integer, intent(inout) :: iwk(*)
    end subroutine c2per
    subroutine c1sor(ndata, xdata, fdata, brkpt, spcoef, ldc, iwk)
      integer, intent(in) :: ndata, ldc
      real, intent(in) :: xdata(*), fdata(*)
      real, intent(inout) :: brkpt(*), spcoef(ldc, *)
      integer, intent(inout) :: iwk(*)
    end subroutine c1sor
    real function csval(x, nintv, brkpt, spcoef)
      integer, intent(in) :: nintv
      real, intent(in) :: x, brkpt(*), spcoef(4, *)
    end function csval
    real function csder(ideriv, x, nintv, brkpt, spcoef)
      integer, intent(in) :: ideriv, nintv
      real, intent(in) :: x, brkpt(*), spcoef(4, *)
    end function csder
    real function csitg(a, b, nintv, brkpt, spcoef)
      integer, intent(in) :: nintv
      real, intent(in) :: a, b, brkpt(*), spcoef(4, *)
    end function csitg
    real function ppval(x, korder, nintv, brkpt, pcoef)
      integer, intent(in) :: korder, nintv
      real, intent(in) :: x, brkpt(*), pcoef(korder, *)
    end function ppval
    real function ppder(ideriv, x, korder, nintv, brkpt, pcoef)
      integer, intent(in) :: ideriv, korder, nintv
      real, intent(in) :: x, brkpt(*), pcoef(korder, *)
    end function ppder
    real function ppitg(a, b, korder, nintv, brkpt, pcoef)
      integer, intent(in) :: korder, nintv
      real, intent(in) :: a, b, brkpt(*), pcoef(korder, *)
    end function ppitg
    subroutine p3der(korder, nintv, brkpt, x, left)
      integer, intent(in) :: korder, nintv
      real, intent(in) :: brkpt(*), x
      integer, intent(inout) :: left
    end subroutine p3der
    subroutine dcsint(ndata, xdata, fdata, brkpt, spcoef)
      integer, intent(in) :: ndata
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(4, *)
    end subroutine dcsint
    subroutine dc2int(ndata, xdata, fdata, brkpt, spcoef, iwk)
      integer, intent(in) :: ndata
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(4, *)
      integer, intent(inout) :: iwk(*)
    end subroutine dc2int
    subroutine dcsakm(ndata, xdata, fdata, brkpt, spcoef)
      integer, intent(in) :: ndata
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(4, *)
    end subroutine dcsakm
    subroutine dc2akm(ndata, xdata, fdata, brkpt, spcoef, iwk)
      integer, intent(in) :: ndata
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(4, *)
      integer, intent(inout) :: iwk(*)
    end subroutine dc2akm
    subroutine dcsdec(ndata, xdata, fdata, ileft, vleft, iright, vright, brkpt, spcoef)
      integer, intent(in) :: ndata
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(4, *)
      integer, intent(in) :: ileft, iright
      double precision, intent(in) :: vleft, vright
    end subroutine dcsdec
    subroutine dc2dec(ndata, xdata, fdata, ileft, vleft, iright, vright, brkpt, spcoef, iwk)
      integer, intent(in) :: ndata
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(4, *)
      integer, intent(in) :: ileft, iright
      double precision, intent(in) :: vleft, vright
      integer, intent(inout) :: iwk(*)
    end subroutine dc2dec
    subroutine dcsper(ndata, xdata, fdata, brkpt, spcoef)
      integer, intent(in) :: ndata
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(4, *)
    end subroutine dcsper
    subroutine dc2per(ndata, xdata, fdata, brkpt, spcoef, wk, iwk)
      integer, intent(in) :: ndata
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(4, *)
      double precision, intent(inout) :: wk(*)
      integer, intent(inout) :: iwk(*)
    end subroutine dc2per
    subroutine dc1sor(ndata, xdata, fdata, brkpt, spcoef, ldc, iwk)
      integer, intent(in) :: ndata, ldc
      double precision, intent(in) :: xdata(*), fdata(*)
      double precision, intent(inout) :: brkpt(*), spcoef(ldc, *)
      integer, intent(inout) :: iwk(*)
    end subroutine dc1sor
    double precision function dcsval(x, nintv, brkpt, spcoef)
      integer, intent(in) :: nintv
      double precision, intent(in) :: x, brkpt(*), spcoef(4, *)
    end function dcsval
    double precision function dcsder(ideriv, x, nintv, brkpt, spcoef)
      integer, intent(in) :: ideriv, nintv
      double precision, intent(in) :: x, brkpt(*), spcoef(4, *)
    end function dcsder
    double precision function dcsitg(a, b, nintv, brkpt, spcoef)
      integer, intent(in) :: nintv
      double precision, intent(in) :: a, b, brkpt(*), spcoef(4, *)
    end function dcsitg
    double precision function dppval(x, korder, nintv, brkpt, pcoef)
      integer, intent(in) :: korder, nintv
      double precision, intent(in) :: x, brkpt(*), pcoef(korder, *)
    end function dppval
    double precision function dppder(ideriv, x, korder, nintv, brkpt, pcoef)
      integer, intent(in) :: ideriv, korder, nintv
      double precision, intent(in) :: x, brkpt(*), pcoef(korder, *)
    end function dppder
    double precision function dppitg(a, b, korder, nintv, brkpt, pcoef)
      integer, intent(in) :: korder, nintv
      double precision, intent(in) :: a, b, brkpt(*), pcoef(korder, *)
    end function dppitg
    subroutine dp3der(korder, nintv, brkpt, x, left)
      integer, intent(in) :: korder, nintv
      double precision, intent(in) :: brkpt(*), x
      integer, intent(inout) :: left
    end subroutine dp3der
  end interface
end module orvel_interp
